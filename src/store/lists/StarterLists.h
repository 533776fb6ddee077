// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/lists/ListPlan.h"

#include <QStringList>

namespace lists
{

/// Common crops and pests to begin with: names only. What an office ticks is matched by name, so ticking twice adds nothing.
struct StarterCrop {
    QString group;
    QString type;
    QString variety;
};
struct StarterPest {
    QString name;
    /// "P", "D", "W", "O".
    QString kind;
    /// Names of the crop types on which it is common; empty for all.
    QStringList cropTypes;
};

const std::vector<StarterCrop> &starterCrops();
const std::vector<StarterPest> &starterPests();

/// The ticked crops with their groups and types.
std::vector<GivenList> givenStarterCrops(const std::vector<StarterCrop> &ticked);
/// The ticked pests, each with those of its crop types that the office has.
GivenList givenStarterPests(const std::vector<StarterPest> &ticked, const FarmLists &lists);

} // namespace lists
