// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Letters of the spreadsheet columns "a" to "pz", then one empty entry: 443 in all, counted from 0.
/// Column_Name counts from 0 and raises error 9 outside 0 to 442.
QString Column_Name(int index, bool lower);
/// Number of a name counted from 1, whatever its case; 0 when it is none.
int Column_Number(const QString &name);
/// The column `offset` columns to the right, in upper case. A negative offset goes to the right too and is made positive in the
/// caller's variable. Error 9 beyond the table.
QString Column_Offset(const QString &name, int &offset);
QString Next_Column(const QString &name, int &offset);

/// 100 x part / whole rounded half to even to `decimals` places, as text; `fallback` as text when that is above `limit`; "0" when
/// it cannot be computed.
QString Percent_Text(double part, double whole, int decimals, double limit, double fallback);

/// A line for every match of the pattern, case ignored, or "Failed".
QString Test_RegExp(const QString &pattern, const QString &subject);

/// The trimmed text without the one character at its end, when it ends in it.
QString Strip_Comma(const QString &text, const QString &character);
