// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>

#include <optional>

namespace controls
{

/// The day that a typed text names: yyyy/MM/dd, dd/MM/yyyy, or the eight digits yyyyMMdd. A month and a day may have one digit, a
/// dash or a point may stand for each stroke. Nothing for any other text, a day that is in no calendar, or one before 1900.
std::optional<QDate> readDate(const QString &text);

} // namespace controls
