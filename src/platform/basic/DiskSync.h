// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace basic
{

/// Waits until a file, or the names in a folder, are on the disk, where the system can be asked for that. For what follows a
/// rename or stands in for a file that is about to be replaced; a path that cannot be opened is left alone.
void syncToDisk(const QString &path);

} // namespace basic
