// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/DateParts.h"

#include "platform/basic/Formats.h"

#include <algorithm>
#include <array>

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

std::optional<SerialDate> dateFromLiteral(QStringView text)
{
    text = text.trimmed();
    const qsizetype blank = text.indexOf(u' ');
    const QDate day = basic::dateFromText(blank < 0 ? text : text.left(blank), basic::DateOrder::MonthFirst);
    const QString clock = blank < 0 ? QStringLiteral("0:0") : text.mid(blank + 1).trimmed().toString();
    const QTime minutes = QTime::fromString(clock, QStringLiteral("h:m"));
    const QTime time = minutes.isValid() ? minutes : QTime::fromString(clock, QStringLiteral("h:m:s"));
    return day.isValid() && time.isValid() ? std::optional(SerialDate::fromDateTime(day, time)) : std::nullopt;
}

} // namespace dao
