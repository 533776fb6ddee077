// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/GridAxis.h"
#include "platform/controls/GridStore.h"

#include <QCoreApplication>

#include <functional>
#include <set>

namespace controls
{

/// Cells drawn as one: the first row and column, and how many of each.
struct CellSpan {
    int row = 0;
    int col = 0;
    int rows = 1;
    int cols = 1;
};

/// All that a grid knows apart from its window: what its painter, its screen-reader side and its input work on.
struct GridState {
    /// Twips of a row and of a column not yet sized.
    GridState(int rowHeight, int colWidth) : rows(rowHeight), cols(colWidth) {}

    GridStore store;
    GridAxis rows;
    GridAxis cols;
    std::vector<CellAlignment> colAlignments;
    std::set<int> mergedRows;
    std::set<int> mergedCols;
    int row = 0;
    int col = 0;
    int selectedRow = -1;
    bool muteZeros = false;
    bool ticks = true;
    std::function<QString(int row, int col)> describer;

    bool isFixed(int cellRow, int cellCol) const { return cellRow < rows.fixed() || cellCol < cols.fixed(); }
    bool isMarked(int cellRow, int cellCol) const;
    CellAlignment alignment(int cellRow, int cellCol) const;
    /// Fixed rows are always drawn bold.
    bool drawnBold(int cellRow, int cellCol) const;
    bool showsTick(int cellRow, int cellCol) const;
    /// The equal neighbours of a cell in a merged row, else in a merged column, looked for between the given bounds. A span
    /// never crosses the edge of the fixed part; empty cells stay alone.
    CellSpan spanOf(int cellRow, int cellCol, int firstRow, int lastRow, int firstCol, int lastCol) const;

    QString describe(int cellRow, int cellCol) const;
    QString columnName(int cellCol) const;
    QString rowName(int cellRow) const;

    Q_DECLARE_TR_FUNCTIONS(controls::FlexGrid)
};

} // namespace controls
