// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/GridColumns.h"

#include <QString>

#include <array>
#include <cstdint>
#include <functional>

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
    /// The columns must live as long as the grid.
    PickGrid(controls::FlexGrid &grid, std::span<const GridColumn> columns);

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
    std::span<const GridColumn> columns_;
};

/// The columns of a list of pests.
inline constexpr std::array<GridColumn, 4> PestPickColumns{
    {{"", 0}, {"CTargetID", 0, "CCTargetID"}, {"Target", 2500, "Target"}, {"Select", 600}}};
