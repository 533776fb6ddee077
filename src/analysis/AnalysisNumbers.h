// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

/// A plain number with two decimals and a point in every locale; other text, also empty text, unchanged.
QString withTwoDecimals(const QString &text);

/// The cells of a text copied from a spreadsheet, of its first row only. A number is written with a point and two decimals, also
/// when it has the decimal comma or the group separators of the locale. Nothing for a text of one cell.
QStringList pastedValues(const QString &text);

/// The leading number of a text, or 0. Error 6 beyond a 32-bit float.
float leadingSingle(const QString &text);
