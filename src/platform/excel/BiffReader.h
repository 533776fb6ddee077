// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Model.h"

namespace excel
{

/// Reads a .xls to be filled. ExcelError, naming the file, for anything that is no sound .xls of the last generation.
std::shared_ptr<model::Book> readXls(const QString &path);

/// The same from bytes; the error then begins with the reason.
std::shared_ptr<model::Book> bookFromXls(const QByteArray &bytes);

} // namespace excel
