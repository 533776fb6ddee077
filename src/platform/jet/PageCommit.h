// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace jet
{

class OpenRollback;
class Pager;

/// The file next to a database that holds what a change overwrites, until the change is complete. Its first bytes are zero
/// between two changes.
QString rollbackPath(const QString &databasePath);

/// Writes the changed pages of a pager into its file: what they held goes to the rollback file and to the disk, then the pages
/// do, then the rollback file is cleared; after that the change is durable. In between, the commit bytes of the user in `slot` on
/// the first page mark a write in progress, for programs that do not know the rollback file. Errors 3026, 3043, 3051; the file
/// then is as before, or the rollback file makes it so when it is next opened. After an error 3043 of a disk that fails from then
/// on it may have changed. Returns the numbers of the pages that were written.
std::vector<std::uint32_t> commitPages(Pager &pager, int slot, OpenRollback &stored);

/// Whether a change of the file was cut short, or is under way. True also when that cannot be read.
bool hasRollback(const QString &databasePath);

/// Undoes a change that was cut short; what has no whole rollback file has not begun. Only for who keeps others out. Error 3428
/// when another program has written to the file since.
void rollBack(const QString &databasePath);

/// Removes a rollback file that holds no change. Only for who keeps others out.
void removeIdleRollback(const QString &databasePath);

} // namespace jet
