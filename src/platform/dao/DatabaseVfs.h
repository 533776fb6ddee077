// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace dao
{

/// Name of a VFS that confines SQLite to a database file and its rollback journal. SQLite otherwise deletes the file that a
/// journal names as its super-journal, and opens a write-ahead log when the file's header says so; this program writes neither.
/// The VFS passes everything else to the default one of the process.
const char *confinedVfs();

/// 3051 when the rollback journal of `database` names a super-journal or is a symbolic link. SQLite would refuse it too, but
/// could not say why.
void refuseForeignJournal(const QString &database);

} // namespace dao
