// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Model.h"

namespace excel
{

/// Writes the workbook beside its place and renames it. ExcelError, naming the file, when anything refuses; what stood there
/// before is then untouched.
void saveBook(const model::Book &book, const QString &path, int format);

} // namespace excel
