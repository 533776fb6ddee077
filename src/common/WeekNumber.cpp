// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/WeekNumber.h"

#include <algorithm>
#include <cmath>
#include <limits>

std::int16_t weekNumber(QDate date, QDate yearOf)
{
    const auto days = QDate(yearOf.year(), 1, 1).daysTo(date);
    using Limits = std::numeric_limits<std::int16_t>;
    const double week = std::floor(static_cast<double>(days) / 7.0) + 1.0;
    return static_cast<std::int16_t>(std::clamp<double>(week, Limits::min(), Limits::max()));
}
