// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/SerialDate.h"

#include <QString>

#include <optional>

namespace dao
{

/// One part of a date as Datepart gives it: yyyy, q (quarter), m, y (day of the year), d, h, n (minutes), s, in any letter case.
std::optional<int> datePart(const QString &interval, basic::SerialDate date);

/// The date inside #...#: month first (day first where that gives no date) or year first, with or without a time of day.
std::optional<basic::SerialDate> dateFromLiteral(QStringView text);

} // namespace dao
