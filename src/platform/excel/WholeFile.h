// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace excel
{

/// All bytes of a file; ExcelError with the reason when they cannot be read completely.
QByteArray wholeFile(const QString &path);

} // namespace excel
