// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Model.h"

namespace excel
{

/// The workbook as the bytes of a .xls. ExcelError when a limit of the format stands against it.
QByteArray xlsBytes(const model::Book &book);

} // namespace excel
