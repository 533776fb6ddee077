// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/SerialDate.h"

#include <algorithm>
#include <cmath>

namespace basic
{

namespace
{
constexpr int SecondsPerDay = 86400;
/// 1 January 100, and the day after 31 December 9999.
constexpr double FirstDay = -657434.0;
constexpr double AfterLastDay = 2958466.0;
const QDate &epoch()
{
    static const QDate date(1899, 12, 30);
    return date;
}
} // namespace

SerialDate SerialDate::fromDate(QDate date)
{
    return fromDateTime(date, QTime(0, 0));
}

SerialDate SerialDate::fromDateTime(QDate date, QTime time)
{
    if (!date.isValid()) {
        return {};
    }
    const auto days = static_cast<double>(epoch().daysTo(date));
    const double part = time.isValid() ? time.msecsSinceStartOfDay() / (SecondsPerDay * 1000.0) : 0.0;
    return SerialDate(days < 0.0 ? days - part : days + part);
}

// Written so that not-a-number is none.
bool SerialDate::isOnCalendar() const
{
    return days_ > FirstDay - 1.0 && days_ < AfterLastDay;
}

QDate SerialDate::date() const
{
    if (!isOnCalendar()) {
        return {};
    }
    return epoch().addDays(static_cast<qint64>(std::trunc(days_)));
}

QTime SerialDate::time() const
{
    if (!isOnCalendar()) {
        return QTime(0, 0);
    }
    const double part = std::fabs(days_ - std::trunc(days_));
    const auto seconds = std::min(static_cast<int>(std::lround(part * SecondsPerDay)), SecondsPerDay - 1);
    return QTime::fromMSecsSinceStartOfDay(seconds * 1000);
}

} // namespace basic
