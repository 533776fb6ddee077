// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/Clock.h"

#include <utility>

namespace basic
{

namespace
{
std::optional<QDateTime> &stoppedMoment()
{
    static std::optional<QDateTime> moment;
    return moment;
}
} // namespace

QDateTime Clock::now()
{
    return stoppedMoment().value_or(QDateTime::currentDateTime());
}

QDate Clock::today()
{
    return now().date();
}

void Clock::stopAt(std::optional<QDateTime> moment)
{
    stoppedMoment() = std::move(moment);
}

} // namespace basic
