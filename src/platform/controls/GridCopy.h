// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/GridState.h"

namespace controls
{

/// Visible cells of a grid as lines of tab-separated text, without empty lines. Tabs and line breaks in a cell become spaces.
QString copiedCells(const GridState &state, const CellSpan &span);
/// The selection: its cells, or whole rows in a grid with a selected row.
QString copiedSelection(const GridState &state);
/// All cells with the headings.
QString copiedGrid(const GridState &state);

} // namespace controls
