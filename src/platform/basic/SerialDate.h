// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QTime>

#include <compare>

namespace basic
{

/// A point in time as the databases store it: days since 1899-12-30, the fraction being the time of day.
/// Before that day the whole days are negative while the time of day still counts upwards, so
/// -1.25 is 1899-12-29 06:00. No time zone: what was stored comes back bit for bit.
class SerialDate
{
public:
    constexpr SerialDate() = default;
    constexpr explicit SerialDate(double days) : days_(days) {}
    /// An invalid date gives the zero date.
    static SerialDate fromDate(QDate date);
    static SerialDate fromDateTime(QDate date, QTime time);

    constexpr double days() const { return days_; }
    /// The zero date 1899-12-30 00:00 means "never set" where it is read from a file.
    constexpr bool isZero() const { return days_ == 0.0; }
    /// Invalid for a number of days outside the years 100 to 9999, which only a damaged file holds.
    QDate date() const;
    /// Rounded to the nearest second, never past 23:59:59; midnight where the date is invalid.
    QTime time() const;

    /// Compares the stored numbers, as the database does.
    constexpr auto operator<=>(const SerialDate &) const = default;

private:
    bool isOnCalendar() const;

    double days_ = 0.0;
};

} // namespace basic
