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

/// A grid's state apart from its widget, shared by painter, accessibility and input.
struct GridState {
    /// Default twips of a row and of a column.
    GridState(int rowHeight, int colWidth) : rows(rowHeight), cols(colWidth) {}

    GridStore store;
    GridAxis rows;
    GridAxis cols;
    std::vector<CellAlignment> colAlignments;
    std::set<int> mergedRows;
    std::set<int> mergedCols;
    std::set<int> mutedCols;
    int row = 0;
    int col = 0;
    /// The other end of a selection that was extended from the current cell.
    std::optional<std::pair<int, int>> anchor;
    int selectedRow = -1;
    /// The column that is empty in the closing row of a list; -1 for none.
    int nameColumn = -1;
    bool muteZeros = false;
    bool ticks = true;
    /// Shown below the headings of a grid without records.
    QString emptyText;
    std::function<QString(int row, int col)> describer;
    std::function<QString(int row, int col)> copyText;

    bool isFixed(int cellRow, int cellCol) const { return cellRow < rows.fixed() || cellCol < cols.fixed(); }
    bool isColoured(int cellRow, int cellCol) const;
    CellAlignment alignment(int cellRow, int cellCol) const;
    /// Fixed rows are always bold.
    bool drawnBold(int cellRow, int cellCol) const;
    bool showsTick(int cellRow, int cellCol) const;
    /// The row that closes a list: its colours are stored, but not drawn.
    bool isNameless(int cellRow) const;
    /// The equal neighbours of a cell in a merged row, else in a merged column, within the given bounds. A span never crosses the
    /// edge of the fixed part; empty cells are not merged.
    CellSpan spanOf(int cellRow, int cellCol, int firstRow, int lastRow, int firstCol, int lastCol) const;

    /// The current cell, or the cells between it and the anchor.
    CellSpan selection() const;

    QString describe(int cellRow, int cellCol) const;
    QString columnName(int cellCol) const;
    QString rowName(int cellRow) const;

    Q_DECLARE_TR_FUNCTIONS(controls::FlexGrid)
};

} // namespace controls
