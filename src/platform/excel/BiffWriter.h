// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Model.h"

namespace excel
{

/// The workbook as the bytes of a .xls. ExcelError above a limit of the format.
QByteArray xlsBytes(const model::Book &book);

} // namespace excel
