// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/SerialDate.h"

#include <QString>

namespace basic
{

/// Formats a date by a pattern of d, dd, m, mm, nn (minutes), h, hh, s, ss, yy, yyyy without regard to case; a run of
/// m directly after an h run also means minutes. Other characters are copied. Digits are always 0 to 9.
QString formatDate(SerialDate date, QStringView pattern);
QString formatDate(QDate date, QStringView pattern);

/// The user's locale's long form, and its short form with a four-digit year.
QString longDate(QDate date);
QString shortDate(QDate date);

/// Which number of a date comes first when the year comes last. The other order is tried when the first one gives no date, except
/// for Typed, which knows the day first only, and the eight digits yyyymmdd besides.
enum class DateOrder { DayFirst, MonthFirst, Typed };

/// Reads a date: the year with four digits first or last, month and day with one or two, parted by "/", "-" or ".". An invalid
/// QDate for any other text.
QDate dateFromText(QStringView text, DateOrder order = DateOrder::DayFirst);

/// `decimals` digits after a point whatever the locale, halves away from zero: "#0" is 0 decimals, "#0.00" is 2.
QString formatFixed(double value, int decimals);
/// The same for a 32-bit float, rounded from its seven digits: 2.675 gives 2.68.
QString formatFixedSingle(float value, int decimals);

/// Shortest decimal text that reads back as the same 32-bit float: 1.1, never 1.10000002384186. Without an exponent, so that
/// Val() reads it whole.
QString singleText(float value);
/// Decimal text of a double, at most 15 digits without an exponent, point whatever the locale.
QString doubleText(double value);

/// "True" or "False", as a Boolean joined to a text.
QString booleanText(bool value);

} // namespace basic
