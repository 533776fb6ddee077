// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/FieldSheetData.h"
#include "reports/modReporting.h"

namespace reports
{

/// The grids of the field sheets: pests across, monitoring points down, an empty line and the line for the scout's totals.
/// The grid begins with its heading in row 9.
inline constexpr int SheetGridRow = 9;

/// "A9" from "A" and 9.
QString cellName(const QString &column, int row);
/// Column of pest 1, 2 ... when pest 1 is `offset` columns right of column A.
QString pestColumn(int pest, int offset);

/// Layout with one column per pest, on a block's sheet, pest 1 in B.
void writeBlockGrid(const excel::Worksheet &sheet, const FieldSheetData &data, const SheetBlock &block);
/// The same on the farm sheet, pest 1 in C.
void writeAllGrid(const excel::Worksheet &sheet, const FieldSheetData &data, const std::vector<SheetBlock> &blocks);
/// Layouts with several columns per pest, from C on either sheet. Pests beyond the sixth, or the ninth, have no cells.
void writeGroupedGrid(const excel::Worksheet &sheet, const FieldSheetData &data, const std::vector<SheetBlock> &blocks);

} // namespace reports
