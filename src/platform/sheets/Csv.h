// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/sheets/Workbook.h"

#include <QStringList>

namespace sheets
{

/// Rows of separated values, every cell a text. The separator is a comma, semicolon or tab, whichever the first filled line has
/// most of, or that of a first line "sep=;". UTF-8 and UTF-16 with byte order mark, UTF-8 without, else Windows-1252. A value in
/// double quotes may hold separators and line ends, a doubled quote is one. SheetError for a quote that does not close, for bytes
/// that are no text, and beyond MaxRows or MaxColumns.
std::vector<std::vector<Cell>> readCsv(const QByteArray &bytes);

/// Rows as the clipboard has them: separated by tabs, quoted only where a value holds a tab, a quote or a line end. A quote that
/// does not close is an ordinary character.
std::vector<std::vector<Cell>> readClipboardText(const QString &text);

/// Rows as a clipboard takes them.
QString clipboardText(const std::vector<QStringList> &rows);

/// UTF-8 with byte order mark, commas, CRLF.
QByteArray csvBytes(const std::vector<QStringList> &rows);

} // namespace sheets
