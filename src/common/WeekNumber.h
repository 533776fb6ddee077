// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>

#include <cstdint>

/// Week of a date counted from 1 January of the year of `yearOf`: whole days / 7 rounded down, plus 1. 1 to 7 January are week 1,
/// 31 December is week 53; it has nothing to do with weekdays. A date before that 1 January gives 0 or less. Centuries
/// away the result is limited to 16 bits, so that the row of a mistyped year still opens.
std::int16_t weekNumber(QDate date, QDate yearOf);
inline std::int16_t weekNumber(QDate date)
{
    return weekNumber(date, date);
}
