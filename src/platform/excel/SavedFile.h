// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Model.h"

namespace excel
{

/// Writes the workbook to a temporary file in the same folder and renames it. ExcelError, naming the file, on any failure; a file
/// there is then unchanged.
void saveBook(const model::Book &book, const QString &path, int format);

} // namespace excel
