// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Workspace.h"

#include "platform/basic/Permissions.h"
#include "platform/basic/TextFiles.h"
#include "platform/dao/Engine.h"
#include "platform/dao/FileFormat.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace dao
{

namespace
{

// A rollback journal, so that an idle file holds everything, and a wait for the disk at every commit. Pages are checked as they
// are read, since damage must be reported and not followed.
constexpr const char *Settings =
    "PRAGMA journal_mode=DELETE; PRAGMA synchronous=EXTRA; PRAGMA temp_store=MEMORY; PRAGMA cache_size=-8000;"
    "PRAGMA cell_size_check=ON; PRAGMA mmap_size=0;";

QString existingFile(const QString &requested)
{
    const auto path = basic::findPath(requested);
    if (!path) {
        throw DataError(DataErrorNumber::FileNotFound, QStringLiteral("Could not find the file %1.").arg(requested));
    }
    const QFileInfo info(*path);
    if (!info.isFile() || !info.isReadable()) {
        throw DataError(DataErrorNumber::CannotOpenFile,
                        !info.isFile() ? QStringLiteral("%1 is not a file.").arg(*path)
                                       : QStringLiteral("%1 cannot be opened: you have no permission to read it.").arg(*path));
    }
    return info.absoluteFilePath();
}

/// Reads the file for the first time: rolls back what a killed program left behind and takes the lock of an exclusive opening.
void readFirst(Connection &connection, bool exclusive)
{
    try {
        if (exclusive) {
            connection.execute("PRAGMA locking_mode=EXCLUSIVE");
            connection.execute(connection.isReadOnly() ? "BEGIN; SELECT 1 FROM sqlite_schema; COMMIT"
                                                       : "BEGIN EXCLUSIVE; COMMIT");
        }
        connection.number("SELECT count(*) FROM sqlite_schema");
        connection.execute(Settings);
    } catch (const DataError &error) {
        if (error.number() != static_cast<int>(DataErrorNumber::Locked)) {
            throw;
        }
        throw DataError(DataErrorNumber::FileInUse,
                        QStringLiteral("%1 is in use by another program. Close it there and try again.").arg(connection.path()));
    }
}

std::unique_ptr<Database> databaseOn(Connection connection, bool exclusive)
{
    auto state = std::make_unique<Database::State>();
    state->engine = std::make_shared<Engine>(std::move(connection), exclusive);
    return std::make_unique<Database>(std::move(state));
}

} // namespace

std::unique_ptr<Database> Workspace::OpenDatabase(const QString &path, bool exclusive, bool readOnly, const QString &connect)
{
    Connection connection(existingFile(path), readOnly ? Connection::Mode::ReadOnly : Connection::Mode::ReadWrite);
    checkHeader(connection);
    readFirst(connection, exclusive);
    checkApplication(connection);
    checkPassword(connection, passwordIn(connect));
    return databaseOn(std::move(connection), exclusive);
}

std::unique_ptr<Database> Workspace::CreateDatabase(const QString &path, const QString &connect)
{
    const QString target = QFileInfo(basic::pathForWriting(path)).absoluteFilePath();
    QFile file(target);
    if (!file.open(QIODevice::NewOnly)) {
        throw basic::RunTimeError(basic::ErrorNumber::PathFileAccess,
                                  QFileInfo::exists(target)
                                      ? QStringLiteral("The file %1 exists already.").arg(target)
                                      : QStringLiteral("The file %1 cannot be created: %2").arg(target, file.errorString()));
    }
    file.close();
    basic::followFolder(target);
    try {
        Connection connection(target, Connection::Mode::ReadWrite);
        connection.execute(Settings);
        connection.execute("BEGIN IMMEDIATE");
        connection.execute("PRAGMA application_id=" + QByteArray::number(ApplicationId));
        storePassword(connection, passwordIn(connect));
        connection.execute("COMMIT");
        return databaseOn(std::move(connection), false);
    } catch (const basic::RunTimeError &) {
        file.remove();
        throw;
    }
}

} // namespace dao
