// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sheets/Workbook.h"

#include "platform/basic/RunTimeError.h"
#include "platform/sheets/Csv.h"
#include "platform/sheets/SheetError.h"
#include "platform/sheets/XlsxReader.h"
#include "platform/sheets/ZipArchive.h"

#include <QFile>
#include <QFileInfo>

namespace sheets
{

using basic::ErrorNumber;
using basic::RunTimeError;

namespace
{

/// A list of 50,000 rows of text is a fifth of this.
constexpr qint64 MaxTextBytes = 64 * 1024 * 1024;

[[noreturn]] void refuse(const QString &path, const QString &why)
{
    throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("%1 %2").arg(path, why));
}

/// What a reader finds wrong, as a sentence that names the file.
template <typename Body> Workbook naming(const QString &path, Body &&body)
{
    try {
        return body();
    } catch (const SheetError &error) {
        refuse(path, error.description());
    }
}

} // namespace

const Cell &Sheet::at(int row, int column) const
{
    static const Cell blank;
    if (row < 0 || column < 0 || static_cast<std::size_t>(row) >= rows.size()) {
        return blank;
    }
    const std::vector<Cell> &cells = rows[static_cast<std::size_t>(row)];
    return static_cast<std::size_t>(column) < cells.size() ? cells[static_cast<std::size_t>(column)] : blank;
}

QString columnLetters(int column)
{
    constexpr int Letters = 26;
    QString letters;
    for (int rest = column + 1; rest > 0; rest = (rest - 1) / Letters) {
        letters.prepend(QChar(static_cast<char16_t>(u'A' + (rest - 1) % Letters)));
    }
    return letters;
}

Workbook readWorkbook(const QString &path)
{
    QFile file(path);
    if (!file.exists()) {
        throw RunTimeError(ErrorNumber::FileNotFound, QStringLiteral("File not found: %1").arg(path));
    }
    if (QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly)) {
        refuse(path, QStringLiteral("cannot be read. Check that it is a file and that you may open it."));
    }
    const QByteArray beginning = file.peek(8);
    if (beginning.startsWith("PK")) {
        file.close();
        return naming(path, [&] {
            ZipArchive archive(path);
            return readXlsx(archive);
        });
    }
    if (beginning.startsWith("\xD0\xCF\x11\xE0")) {
        refuse(path,
               QStringLiteral("is an .xls workbook or protected by a password. Save it as .xlsx without a password, then open it "
                              "again."));
    }
    if (file.size() > MaxTextBytes) {
        refuse(path, QStringLiteral("is too large for a list: %1 MB.").arg(file.size() / (1024 * 1024)));
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError || bytes.size() != file.size()) {
        refuse(path, QStringLiteral("could not be read to its end: %1.").arg(file.errorString()));
    }
    return naming(path, [&] { return Workbook{{{QFileInfo(path).completeBaseName(), readCsv(bytes), {}}}}; });
}

} // namespace sheets
