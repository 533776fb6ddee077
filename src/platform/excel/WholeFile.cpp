// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/WholeFile.h"

#include "platform/excel/ExcelError.h"

#include <QFile>

namespace excel
{

QByteArray wholeFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw ExcelError(file.errorString());
    }
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError || bytes.size() < file.size()) {
        throw ExcelError(QStringLiteral("it could not be read completely: %1").arg(file.errorString()));
    }
    return bytes;
}

} // namespace excel
