// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/SavedFile.h"

#include "platform/basic/FileReplacement.h"
#include "platform/basic/Permissions.h"
#include "platform/excel/BiffWriter.h"
#include "platform/excel/ExcelError.h"
#include "platform/excel/XlsxWriter.h"

#include <QFileInfo>

namespace excel
{

namespace
{
[[noreturn]] void refuse(const QString &path, const QString &reason)
{
    throw ExcelError(QStringLiteral("The file %1 cannot be saved: %2").arg(path, reason));
}

QByteArray bytesOf(const model::Book &book, const QString &path, int format)
{
    try {
        return format == xlExcel8 ? xlsBytes(book) : xlsxBytes(book);
    } catch (const ExcelError &error) {
        refuse(path, error.description());
    }
}
} // namespace

void saveBook(const model::Book &book, const QString &path, int format)
{
    if (QFileInfo(path).isDir()) {
        refuse(path, QStringLiteral("it is a folder."));
    }
    const QByteArray bytes = bytesOf(book, path, format);
    const bool isNew = !QFileInfo::exists(path);
    if (const QString failure = basic::writeWholeFile(path, bytes); !failure.isEmpty()) {
        refuse(path, failure);
    }
    if (isNew) {
        basic::followFolder(path);
    }
}

} // namespace excel
