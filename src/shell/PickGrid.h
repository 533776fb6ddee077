// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace controls
{
class FlexGrid;
}

/// A grid from which rows are chosen by a mark in one column: white is not chosen, yellow is. Row 0 is the header, the last row
/// stays empty. Column 1 holds the key, column 2 the name, by which a screen reader names the row.
class PickGrid
{
public:
    struct Column {
        QString header;
        int width;
    };

    PickGrid(controls::FlexGrid &grid, std::vector<Column> columns);

    /// Empties the grid and lays out header, widths and `count` white data rows with the empty one behind them.
    void layOut(int count);
    bool isDataRow(int row) const;
    /// Data rows are 1 to this one.
    int lastDataRow() const;
    std::int32_t key(int row) const;
    int markColumn() const { return static_cast<int>(columns_.size()) - 1; }

    bool isMarked(int row) const;
    void setMarked(int row, bool marked);
    /// Marks every row with "+" beside the colour, or unmarks it; changes nothing but the picture.
    void markAll(bool marked);
    int Count_Selected() const;

private:
    controls::FlexGrid &grid_;
    std::vector<Column> columns_;
};
