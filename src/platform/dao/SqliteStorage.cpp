// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/SqliteStorage.h"

#include "platform/basic/Permissions.h"
#include "platform/dao/FileFormat.h"
#include "platform/dao/Maintenance.h"

#include <QFile>
#include <QFileInfo>

#include <optional>
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

} // namespace

std::unique_ptr<SqliteStorage> SqliteStorage::open(const QString &path, bool exclusive, bool readOnly, const QString &password)
{
    Connection connection(path, readOnly ? Connection::Mode::ReadOnly : Connection::Mode::ReadWrite);
    checkHeader(connection);
    readFirst(connection, exclusive);
    checkApplication(connection);
    checkPassword(connection, password);
    return std::unique_ptr<SqliteStorage>(new SqliteStorage(std::move(connection), exclusive));
}

std::unique_ptr<SqliteStorage> SqliteStorage::create(const QString &path, const QString &password)
{
    QFile file(path);
    if (!file.open(QIODevice::NewOnly)) {
        throw basic::RunTimeError(basic::ErrorNumber::PathFileAccess,
                                  QFileInfo::exists(path)
                                      ? QStringLiteral("The file %1 exists already.").arg(path)
                                      : QStringLiteral("The file %1 cannot be created: %2").arg(path, file.errorString()));
    }
    file.close();
    basic::followFolder(path);
    try {
        Connection connection(path, Connection::Mode::ReadWrite);
        connection.execute(Settings);
        connection.execute("BEGIN IMMEDIATE");
        connection.execute("PRAGMA application_id=" + QByteArray::number(ApplicationId));
        storePassword(connection, password);
        connection.execute("COMMIT");
        return std::unique_ptr<SqliteStorage>(new SqliteStorage(std::move(connection), false));
    } catch (const basic::RunTimeError &) {
        file.remove();
        throw;
    }
}

void SqliteStorage::copyTo(const QString &path, bool isInTransaction)
{
    // Writes of an open scope are not part of the file yet, so another connection reads it.
    std::optional<Connection> reader;
    if (isInTransaction && !exclusive_) {
        reader.emplace(connection_.path(), Connection::Mode::ReadOnly);
    }
    copyFile(connection_.path(), path,
             [&](const QString &part) { return FileCopy::ofSqlite(reader ? *reader : connection_, part); });
}

QStringList SqliteStorage::checkIntegrity(const Progress &progress)
{
    return dao::checkIntegrity(connection_, progress);
}

QStringList SqliteStorage::checkPages()
{
    return dao::checkPages(connection_);
}

} // namespace dao
