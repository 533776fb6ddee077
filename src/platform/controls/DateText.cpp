// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/DateText.h"

#include <QRegularExpression>

#include <array>

namespace controls
{

namespace
{

/// A mistyped year, such as 0511, is nearly always before this one.
constexpr int EarliestYear = 1900;

} // namespace

std::optional<QDate> readDate(const QString &text)
{
    static const std::array<QRegularExpression, 3> forms{
        QRegularExpression(QStringLiteral("^(?<y>[0-9]{4})[-/.](?<m>[0-9]{1,2})[-/.](?<d>[0-9]{1,2})$")),
        QRegularExpression(QStringLiteral("^(?<d>[0-9]{1,2})[-/.](?<m>[0-9]{1,2})[-/.](?<y>[0-9]{4})$")),
        QRegularExpression(QStringLiteral("^(?<y>[0-9]{4})(?<m>[0-9]{2})(?<d>[0-9]{2})$")),
    };
    for (const QRegularExpression &form : forms) {
        const QRegularExpressionMatch match = form.match(text.trimmed());
        const auto number = [&match](const char *group) { return match.captured(QLatin1String(group)).toInt(); };
        const QDate date(number("y"), number("m"), number("d"));
        if (match.hasMatch() && date.isValid() && date.year() >= EarliestYear) {
            return date;
        }
    }
    return std::nullopt;
}

} // namespace controls
