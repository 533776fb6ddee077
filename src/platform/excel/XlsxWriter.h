// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Model.h"

namespace excel
{

/// The workbook as the bytes of a .xlsx. ExcelError when a limit of the format stands against it, or when it was opened with
/// formulas, notes or pictures, which only a .xls keeps.
QByteArray xlsxBytes(const model::Book &book);

} // namespace excel
