// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/FieldSheetData.h"
#include "reports/modReporting.h"

/// The sheets that scouts carry into the orchard, written cell by cell; no screen needed. Rows count from 1.

/// A plain cell or range: of the format counts merge, wrap, value, size, bold, height, vertical alignment and orientation, and
/// the horizontal alignment where nothing is merged. Fonts and borders stay as they are.
void Write_Cell(const excel::Worksheet &sheet, const QString &c1, const QString &c2, const RangeFormat &format);

/// From `row` on; returns the last row of the heading.
int Print_Block_Heading(const excel::Worksheet &sheet, const FieldSheetData &data, const SheetBlock &block, int row);
/// One block on its own sheet.
void Print_Block_Sheet(const excel::Worksheet &sheet, const FieldSheetData &data, const SheetBlock &block, bool absent);

/// With the title above; returns the last row of the heading.
int Print_All_Heading(const excel::Worksheet &sheet, const FieldSheetData &data, int row, const QString &title);
/// The heading and a row per block and point on one sheet.
void Print_All_Sheet(const excel::Worksheet &sheet, const FieldSheetData &data, const std::vector<SheetBlock> &blocks,
                     bool absent);
/// Widths and page of the farm sheet.
void setUpAllSheet(const excel::Application &application, const excel::Worksheet &sheet);
/// Widths and page of a block's sheet.
void setUpBlockSheet(const excel::Application &application, const excel::Worksheet &sheet);
