// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace basic
{

/// Gives a new file or folder the permissions and the group of the folder that it is in, so that a private folder has private
/// files and a shared one shared files. A file made by root also gets the owner of the folder. Failures are ignored: not every
/// file system has permissions.
void followFolder(const QString &path);

/// Creates a folder with its missing parents; each follows the folder that it is in and is on the disk. False when that fails.
bool makeFolder(const QString &path);

/// Gives `to` the permissions of `from` and, as far as the user may do that, its owner and group. Failures are ignored.
void copyPermissions(const QString &from, const QString &to);

} // namespace basic
