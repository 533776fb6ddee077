// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/FieldSheetData.h"
#include "reports/modReporting.h"

namespace reports
{

/// The field sheets of the scouts, written cell by cell. Rows count from 1.

/// From `row` on; returns the last row of the heading.
int Print_Block_Heading(const excel::Worksheet &sheet, const FieldSheetData &data, const SheetBlock &block, int row);
/// One block on its own sheet.
void Print_Block_Sheet(const excel::Worksheet &sheet, const FieldSheetData &data, const SheetBlock &block, SheetKind sheetKind);

/// With the title above; returns the last row of the heading.
int Print_All_Heading(const excel::Worksheet &sheet, const FieldSheetData &data, int row, const QString &title);
/// The heading and a row per block and point on one sheet.
void Print_All_Sheet(const excel::Worksheet &sheet, const FieldSheetData &data, const std::vector<SheetBlock> &blocks,
                     SheetKind sheetKind);
/// Widths and page of the farm sheet.
void setUpAllSheet(const excel::Application &application, const excel::Worksheet &sheet);
/// Widths and page of a block's sheet.
void setUpBlockSheet(const excel::Application &application, const excel::Worksheet &sheet);

} // namespace reports
