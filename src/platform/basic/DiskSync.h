// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace basic
{

/// Waits until a file, or the names in a folder, are on the disk, where the system can be asked for that. To be called after a
/// rename and before a file is replaced; a path that cannot be opened is ignored. Error 57 when the disk fails.
void syncToDisk(const QString &path);

/// The same for an open file, and writing at its present position. `handle` is a descriptor of the C library. Each returns the
/// system's error code, 0 after success.
int syncOpenFile(int handle);
int writeAll(int handle, const char *bytes, qint64 length);

/// Whether the system's error code means a full disk; a limit on the size of a file or on a user's share of the disk does too.
bool isFullDisk(int systemError);

} // namespace basic
