// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <vector>

namespace controls
{
class FlexGrid;
}
namespace dao
{
class Recordset;
}

/// A grid from which rows are chosen by a mark in one column: white is not chosen, yellow is. Row 0 is the header, the last row
/// stays empty. Column 1 holds the key, column 2 the name, by which a screen reader names the row; the name takes spare width.
/// Space and F2 click the current cell.
class PickGrid
{
public:
    struct Column {
        QString header;
        int width;
        /// Of the query that fills the grid; none where the column has no text of its own.
        const char *field = nullptr;
    };

    PickGrid(controls::FlexGrid &grid, std::vector<Column> columns);

    /// Empties the grid and fills it with the rows of a query, none of them chosen. `filled` is told of each row once its texts
    /// stand.
    void fill(dao::Recordset rows, const std::function<void(int row)> &filled = {});
    bool isDataRow(int row) const;
    /// Data rows are 1 to this one.
    int lastDataRow() const;
    std::int32_t key(int row) const;
    QString name(int row) const;
    int markColumn() const { return static_cast<int>(columns_.size()) - 1; }

    bool isMarked(int row) const;
    void setMarked(int row, bool marked);
    /// Marks every row with "+" beside the colour, or unmarks it; changes nothing but the picture.
    void markAll(bool marked);
    int Count_Selected() const;

private:
    /// Empties the grid and lays out header, widths and `count` white data rows with the empty one behind them.
    void layOut(int count);

    controls::FlexGrid &grid_;
    std::vector<Column> columns_;
};

/// The columns of a list of pests.
std::vector<PickGrid::Column> pestPickColumns();
