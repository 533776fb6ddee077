// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace sheets
{

/// Which cell styles of a workbook show a number as a date or time, by the style's index.
std::vector<bool> dateStyles(const QByteArray &stylesXml);

/// Whether a format code, such as "dd/mm/yyyy", is one of a date or time.
bool isDateFormat(QStringView code);

} // namespace sheets
