// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/WeekNumber.h"

#include <cmath>

std::int16_t weekNumber(QDate date, QDate yearOf)
{
    const auto days = QDate(yearOf.year(), 1, 1).daysTo(date);
    return static_cast<std::int16_t>(std::floor(static_cast<double>(days) / 7.0) + 1.0);
}
