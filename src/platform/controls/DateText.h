// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>

#include <optional>

namespace controls
{

/// Reads a typed date: yyyy/MM/dd, dd/MM/yyyy or the eight digits yyyyMMdd. Month and day may have one digit; dashes or points
/// may replace the slashes. Nothing for any other text, for a day that does not exist, or before 1900.
std::optional<QDate> readDate(const QString &text);

} // namespace controls
