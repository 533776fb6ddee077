// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>

#include <optional>

namespace basic
{

/// The one source of now and today, so that a test or the scripted round can work on 31 December.
class Clock
{
public:
    static QDateTime now();
    static QDate today();
    /// Stops the clock at `moment`; an empty value lets it run again.
    static void stopAt(std::optional<QDateTime> moment);
};

} // namespace basic
