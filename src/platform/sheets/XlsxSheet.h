// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/sheets/Workbook.h"

#include <QStringList>
#include <QXmlStreamReader>

namespace sheets
{

/// What the sheets of one workbook share.
struct XlsxShared {
    QStringList texts;
    /// By style index: the number is a date.
    std::vector<bool> dateStyles;
    /// Days count from 1904 instead of 1900.
    bool from1904 = false;
};

/// Reads a worksheet part. SheetError when it is damaged or beyond the limits.
Sheet readXlsxSheet(const QString &name, const QByteArray &sheetXml, const XlsxShared &shared);

/// The text of a string item, whose start was just read: all its runs without phonetic hints, with "_x000D_" and the like as the
/// characters that they stand for.
QString readStringItem(QXmlStreamReader &xml);

} // namespace sheets
