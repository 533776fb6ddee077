// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

namespace controls
{
class FlexGrid;
}

/// A column of a list of records; a width of 0 (twips) hides it.
struct GridColumn {
    const char *header;
    int width;
    /// Of the query that fills the list, where the column shows its text as it is.
    const char *field = nullptr;
};

/// Empties the grid and lays it out: a bold header, as many rows as there are records, and behind them one that stays empty.
void layOutList(controls::FlexGrid &grid, std::span<const GridColumn> columns, int records);
