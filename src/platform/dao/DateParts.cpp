// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/DateParts.h"

#include <algorithm>
#include <array>
#include <vector>

namespace dao
{

using basic::SerialDate;

std::optional<int> datePart(const QString &interval, SerialDate date)
{
    struct Part {
        QLatin1String interval;
        int (*read)(SerialDate);
    };
    static const std::array parts{
        Part{QLatin1String("yyyy"), [](SerialDate d) { return d.date().year(); }},
        Part{QLatin1String("q"), [](SerialDate d) { return (d.date().month() + 2) / 3; }},
        Part{QLatin1String("m"), [](SerialDate d) { return d.date().month(); }},
        Part{QLatin1String("y"), [](SerialDate d) { return d.date().dayOfYear(); }},
        Part{QLatin1String("d"), [](SerialDate d) { return d.date().day(); }},
        Part{QLatin1String("h"), [](SerialDate d) { return d.time().hour(); }},
        Part{QLatin1String("n"), [](SerialDate d) { return d.time().minute(); }},
        Part{QLatin1String("s"), [](SerialDate d) { return d.time().second(); }},
    };
    const auto found = std::find_if(parts.begin(), parts.end(),
                                    [&](const Part &part) { return interval.compare(part.interval, Qt::CaseInsensitive) == 0; });
    return found == parts.end() ? std::nullopt : std::optional(found->read(date));
}

namespace
{

/// The whole numbers of a text such as 12/31/2026 or 07:08; empty when a part is not a number.
std::vector<int> numbersIn(QStringView text, QChar separator)
{
    std::vector<int> numbers;
    for (const QStringView part : text.split(separator)) {
        bool isNumber = false;
        numbers.push_back(part.toInt(&isNumber));
        if (!isNumber || part.size() > 4) {
            return {};
        }
    }
    return numbers;
}

QDate dayIn(QStringView text)
{
    const std::vector<int> numbers = numbersIn(text, text.contains(u'/') ? u'/' : u'-');
    if (numbers.size() != 3) {
        return {};
    }
    if (numbers[0] > 31) {
        return QDate(numbers[0], numbers[1], numbers[2]);
    }
    const QDate monthFirst(numbers[2], numbers[0], numbers[1]);
    return monthFirst.isValid() ? monthFirst : QDate(numbers[2], numbers[1], numbers[0]);
}

} // namespace

std::optional<SerialDate> dateFromLiteral(QStringView text)
{
    text = text.trimmed();
    const qsizetype blank = text.indexOf(u' ');
    const QDate day = dayIn(blank < 0 ? text : text.left(blank));
    if (!day.isValid()) {
        return std::nullopt;
    }
    if (blank < 0) {
        return SerialDate::fromDate(day);
    }
    std::vector<int> clock = numbersIn(text.mid(blank + 1).trimmed(), u':');
    if (clock.size() != 2 && clock.size() != 3) {
        return std::nullopt;
    }
    clock.resize(3);
    const QTime time(clock[0], clock[1], clock[2]);
    return time.isValid() ? std::optional(SerialDate::fromDateTime(day, time)) : std::nullopt;
}

} // namespace dao
