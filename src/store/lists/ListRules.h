// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/lists/FarmLists.h"

#include <vector>

namespace lists
{

/// What a rule finds in one column of a row.
struct Finding {
    int column = 0;
    /// A sentence.
    QString reason;
    /// False for a mere note.
    bool refuses = true;
};

/// Checks a row that is to be written: all of a new one, what differs in one that is stored, so that a row of another program may
/// keep what no rule here would take. `before` is nullptr for a new row.
std::vector<Finding> checkRecord(const FarmLists &lists, List list, const Record &record, const Record *before);

} // namespace lists
