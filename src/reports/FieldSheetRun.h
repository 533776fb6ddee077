// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/MonitoringConstants.h"
#include "reports/FieldSheetData.h"

#include <functional>

class ScreenHost;

namespace reports
{

/// The instruction to print, from the editor.
struct FieldSheetOrder {
    clsPestMONNew::Key instruction = 0;
    QString method = {};
    QDate completion = {};
    QString person = {};
    SheetLayout layout = SheetLayout::Single;

    SheetKind kind() const { return method == CountMethodName ? SheetKind::Count : SheetKind::Absent; }
};

/// Percent done, 0 to 100.
using SheetProgress = std::function<void(double percent)>;

/// A workbook with a sheet for each block, saved in Reports/Pest Monitor and opened. Nothing happens without blocks.
void printBlockSheets(ScreenHost &host, const FieldSheetOrder &order, const SheetProgress &progress);

/// A workbook with all blocks on one sheet. Nothing happens without an instruction; an error is shown in a box.
void Print_All_Blocks(ScreenHost &host, const FieldSheetOrder &order, const SheetProgress &progress);

} // namespace reports
