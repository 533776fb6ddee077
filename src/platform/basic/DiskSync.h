// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace basic
{

/// Waits until a file, or the names in a folder, are on the disk, where the system can be asked for that. To be called after a
/// rename and before a file is replaced; a path that cannot be opened is ignored. Error 57 when the disk fails.
void syncToDisk(const QString &path);

} // namespace basic
