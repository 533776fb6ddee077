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
    /// Field of the query whose text the column shows.
    const char *field = nullptr;
};

/// Clears the grid and lays it out: a bold header, a row for each record and one empty row.
void layOutList(controls::FlexGrid &grid, std::span<const GridColumn> columns, int records);
