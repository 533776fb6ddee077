// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Database.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace dao
{

enum class FileKind { Sqlite, Jet };

/// Where databases are opened and made.
class Workspace
{
public:
    /// Opens an existing file of either kind; never creates one. `connect` holds ";pwd=..." . 3024 no such file, 3031 wrong
    /// password, 3051 no permission or no file, 3045 opened exclusively elsewhere, 3049 damaged, 3343 no database of this
    /// program. The path is found without regard to case. A file without write permission opens all the same; writing to it
    /// raises 3027.
    static std::unique_ptr<Database> OpenDatabase(const QString &path, bool exclusive, bool readOnly, const QString &connect);
    /// Makes a new empty file with the password of `connect`. An existing file is refused with 75.
    static std::unique_ptr<Database> CreateDatabase(const QString &path, const QString &connect,
                                                    FileKind kind = FileKind::Sqlite);

    /// By the first bytes of the file; Sqlite for a file that cannot be read.
    static FileKind fileKind(const QString &path);
    /// The files that can belong to a database file and must be moved or copied with it, whether they exist or not.
    static QStringList companionFiles(const QString &path);

    /// Receives what the user should know although no operation failed, such as a change by another program that could not be
    /// read. One handler for the process; without one notices are dropped.
    static void setNoticeHandler(std::function<void(const QString &sentence)> handler);
    static void notice(const QString &sentence);
};

} // namespace dao
