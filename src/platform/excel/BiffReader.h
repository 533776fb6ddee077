// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Model.h"

namespace excel
{

/// Reads a .xls. ExcelError, naming the file, for anything but an undamaged .xls of version 8.
std::shared_ptr<model::Book> readXls(const QString &path);

/// The same from bytes; the message of the error then begins with the reason.
std::shared_ptr<model::Book> bookFromXls(const QByteArray &bytes);

} // namespace excel
