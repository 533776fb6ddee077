// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>

#include <cstdint>
#include <span>

namespace controls
{
class ItemCombo;
}
class clsPestMONNew;
struct SessionContext;

/// The period and order of the lists of pests and blocks: order 0 by name, 1 the largest sums first, 2 the smallest first.
struct GraphListPeriod {
    QDate from;
    QDate to;
    std::int16_t rankMode = 0;
};

using GraphCombos = std::span<controls::ItemCombo *const>;

/// Fill each of the lists with the pests found in a block (0 for all), or with the blocks in which the session's pest was found
/// (0 for any), of the session's method. One query serves all lists. Silent.
void Fill_Graph_Pests(GraphCombos combos, clsPestMONNew &objPestMON, const SessionContext &session, std::int32_t block,
                      const GraphListPeriod &period);
void Fill_Graph_Blocks(GraphCombos combos, clsPestMONNew &objPestMON, const SessionContext &session,
                       const GraphListPeriod &period);

/// Selects the first entry in the first list, the second in the second and so on, as far as there are entries.
void preselect(GraphCombos combos);
