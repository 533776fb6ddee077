// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/GridColumns.h"

#include "platform/controls/FlexGrid.h"

void layOutList(controls::FlexGrid &grid, std::span<const GridColumn> columns, int records)
{
    constexpr int headerHeight = 400;
    grid.Clear();
    grid.setCols(static_cast<int>(columns.size()));
    grid.setRows(records + 2);
    grid.setFixedRows(1);
    grid.setFixedCols(0);
    grid.setRowHeight(0, headerHeight);
    int col = 0;
    for (const GridColumn &column : columns) {
        grid.setColWidth(col, column.width);
        grid.setTextMatrix(0, col, QLatin1String(column.header));
        grid.setCellFontBold(0, col, true);
        ++col;
    }
}
