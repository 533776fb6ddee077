// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace basic
{

/// The path for a library that hands it to the system as it is. Windows refuses one of 260 characters and more, unless it is
/// absolute and has a prefix that lifts the limit; a short one is not changed there, and none elsewhere.
QString nativePath(const QString &path);

} // namespace basic
