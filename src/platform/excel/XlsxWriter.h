// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Model.h"

namespace excel
{

/// The workbook as the bytes of a .xlsx. ExcelError above a limit of the format, or when it was opened with
/// formulas, notes or images, which only a .xls can hold.
QByteArray xlsxBytes(const model::Book &book);

} // namespace excel
