// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/DateText.h"

#include "platform/basic/Formats.h"

namespace controls
{

std::optional<QDate> readDate(const QString &text)
{
    /// A mistyped year such as 0511 is nearly always an early one.
    constexpr int EarliestYear = 1900;
    const QDate date = basic::dateFromText(text, basic::DateOrder::Typed);
    return date.isValid() && date.year() >= EarliestYear ? std::optional(date) : std::nullopt;
}

} // namespace controls
