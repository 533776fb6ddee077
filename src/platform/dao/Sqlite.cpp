// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Sqlite.h"

#include "platform/basic/DiskSync.h"
#include "platform/basic/NativePath.h"
#include "platform/dao/Collation.h"
#include "platform/dao/DatabaseVfs.h"
#include "platform/dao/DateParts.h"

#include <sqlite3.h>

#include <new>

namespace dao
{

namespace
{

constexpr int BusyMilliseconds = 2000;

int compareForSqlite(void *, int leftSize, const void *left, int rightSize, const void *right)
{
    return compareText({static_cast<const char *>(left), static_cast<std::size_t>(leftSize)},
                       {static_cast<const char *>(right), static_cast<std::size_t>(rightSize)});
}

void datePartForSqlite(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (sqlite3_value_type(arguments[1]) == SQLITE_NULL) {
        return;
    }
    const auto *interval = reinterpret_cast<const char *>(sqlite3_value_text(arguments[0]));
    const auto part = datePart(QString::fromUtf8(interval), basic::SerialDate(sqlite3_value_double(arguments[1])));
    if (part) {
        sqlite3_result_int(context, *part);
    } else {
        sqlite3_result_error(context, "Datepart knows yyyy, q, m, y, d, h, n and s", -1);
    }
}

DataError errorFor(int code, const QString &path, const QString &message, int systemError)
{
    using Number = DataErrorNumber;
    switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {Number::Locked, QStringLiteral("%1 is in use by another program. Try again when it has finished.").arg(path)};
    case SQLITE_IOERR:
        if (!basic::isFullDisk(systemError)) {
            return {Number::DiskError,
                    QStringLiteral("Reading or writing %1 failed. Check the disk and the connection to it.").arg(path)};
        }
        [[fallthrough]];
    case SQLITE_FULL:
        return {Number::DiskFull,
                QStringLiteral("The disk is full, so %1 was not changed. Free some space and try again.").arg(path)};
    case SQLITE_READONLY:
        if (code == SQLITE_READONLY_ROLLBACK) {
            return {Number::NeedsRepair,
                    QStringLiteral("%1 was left in the middle of a write. The next start rolls the unfinished write back.")
                        .arg(path)};
        }
        if (code == SQLITE_READONLY_DBMOVED) {
            return {
                Number::ReadOnly,
                QStringLiteral("%1 was moved or replaced while it was open, so nothing was written. Put it back, or close the "
                               "program and start it again.")
                    .arg(path)};
        }
        return {Number::ReadOnly,
                QStringLiteral("%1 cannot be written. Check the permissions of the file and of its folder.").arg(path)};
    case SQLITE_CANTOPEN:
        return {Number::CannotOpenFile,
                QStringLiteral("%1 cannot be opened. Check the permissions of the file and of its folder.").arg(path)};
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return {Number::Damaged, QStringLiteral("%1 is damaged. Restore it from a backup.").arg(path)};
    case SQLITE_CONSTRAINT:
        if (code == SQLITE_CONSTRAINT_NOTNULL) {
            return {Number::NullKey, QStringLiteral("A key in %1 cannot be null (%2).").arg(path, message)};
        }
        return {Number::DuplicateKey, QStringLiteral("%1 holds a row with this key already (%2).").arg(path, message)};
    default:
        return {Number::SyntaxError, QStringLiteral("The query cannot be read: %1.").arg(message)};
    }
}

/// A file may come from anywhere: no code that it contains is run, and only what this program needs is possible. The limits are
/// well above what its own files and queries reach.
void guardAgainstFile(sqlite3 *handle)
{
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    for (const auto &[limit, value] : {std::pair{SQLITE_LIMIT_ATTACHED, 0}, std::pair{SQLITE_LIMIT_TRIGGER_DEPTH, 0},
                                       std::pair{SQLITE_LIMIT_LENGTH, 1'000'000}, std::pair{SQLITE_LIMIT_SQL_LENGTH, 100'000},
                                       std::pair{SQLITE_LIMIT_COLUMN, 300}, std::pair{SQLITE_LIMIT_COMPOUND_SELECT, 3},
                                       std::pair{SQLITE_LIMIT_EXPR_DEPTH, 100}, std::pair{SQLITE_LIMIT_FUNCTION_ARG, 8},
                                       std::pair{SQLITE_LIMIT_VDBE_OP, 250'000}}) {
        sqlite3_limit(handle, limit, value);
    }
}

} // namespace

void Connection::Closer::operator()(sqlite3 *handle) const
{
    // Statements may outlive the connection in a recordset; SQLite closes after the last of them.
    sqlite3_close_v2(handle);
}

Connection::Connection(const QString &path, Mode mode)
    : Connection((refuseForeignJournal(path), path), basic::nativePath(path).toUtf8().constData(),
                 mode == Mode::ReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE, confinedVfs())
{
}

Connection Connection::inMemory(const QString &path)
{
    Connection connection(path, ":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MEMORY, nullptr);
    connection.execute("PRAGMA journal_mode=MEMORY; PRAGMA temp_store=MEMORY");
    return connection;
}

Connection::Connection(const QString &path, const char *file, int flags, const char *vfs) : path_(path)
{
    // Counting its memory costs SQLite a lock at every allocation. It refuses once another part of the process has started it,
    // which does no harm.
    static const int withoutCounting = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    Q_UNUSED(withoutCounting);
    sqlite3 *handle = nullptr;
    // With a mutex, since a copy in the background uses the connection on another thread.
    const int code = sqlite3_open_v2(file, &handle, flags | SQLITE_OPEN_FULLMUTEX, vfs);
    handle_.reset(handle);
    if (code != SQLITE_OK) {
        fail(code);
    }
    sqlite3_extended_result_codes(handle, 1);
    sqlite3_busy_timeout(handle, BusyMilliseconds);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    guardAgainstFile(handle);
    sqlite3_create_collation(handle, CollationName, SQLITE_UTF8, nullptr, compareForSqlite);
    sqlite3_create_function(handle, "datepart", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, datePartForSqlite, nullptr,
                            nullptr);
}

bool Connection::isReadOnly() const
{
    return sqlite3_db_readonly(get(), "main") == 1;
}

bool Connection::isAutocommit() const
{
    return sqlite3_get_autocommit(get()) != 0;
}

int Connection::changes() const
{
    return sqlite3_changes(get());
}

void Connection::execute(const QByteArray &sql)
{
    const int code = sqlite3_exec(get(), sql.constData(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) {
        fail(code);
    }
}

std::int64_t Connection::number(const QByteArray &sql)
{
    Statement statement(*this, sql);
    return statement.step() ? statement.integerAt(0) : 0;
}

void Connection::fail(int code) const
{
    if ((code & 0xFF) == SQLITE_NOMEM) {
        throw std::bad_alloc();
    }
    if ((code & 0xFF) == SQLITE_CANTOPEN) {
        refuseForeignJournal(path_);
    }
    const QString message = handle_ ? QString::fromUtf8(sqlite3_errmsg(get())) : QString();
    throw errorFor(code, path_, message, handle_ ? sqlite3_system_errno(get()) : 0);
}

QByteArray quoteName(const QString &name)
{
    return '"' + name.toUtf8().replace('"', "\"\"") + '"';
}

void Statement::Finalizer::operator()(sqlite3_stmt *handle) const
{
    sqlite3_finalize(handle);
}

Statement::Statement(const Connection &connection, const QByteArray &sql) : connection_(&connection)
{
    sqlite3_stmt *handle = nullptr;
    check(sqlite3_prepare_v3(connection.get(), sql.constData(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &handle,
                             nullptr));
    handle_.reset(handle);
}

void Statement::check(int code) const
{
    if (code != SQLITE_OK) {
        connection_->fail(code);
    }
}

void Statement::bind(int parameter, const Value &value)
{
    struct Binder {
        sqlite3_stmt *statement;
        int parameter;
        int operator()(Null) const { return sqlite3_bind_null(statement, parameter); }
        int operator()(bool flag) const { return sqlite3_bind_int(statement, parameter, flag ? -1 : 0); }
        int operator()(std::int32_t number) const { return sqlite3_bind_int(statement, parameter, number); }
        int operator()(double number) const { return sqlite3_bind_double(statement, parameter, number); }
        int operator()(basic::SerialDate date) const { return sqlite3_bind_double(statement, parameter, date.days()); }
        int operator()(const QString &text) const
        {
            const QByteArray bytes = text.toUtf8();
            return sqlite3_bind_text(statement, parameter, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
        }
    };
    check(std::visit(Binder{get(), parameter}, value));
}

void Statement::bindKey(int parameter, std::int64_t key)
{
    check(sqlite3_bind_int64(get(), parameter, key));
}

void Statement::bindBytes(int parameter, const QByteArray &bytes)
{
    check(sqlite3_bind_blob(get(), parameter, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT));
}

bool Statement::step()
{
    const int code = sqlite3_step(get());
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code == SQLITE_DONE) {
        sqlite3_reset(get());
        return false;
    }
    // The connection retains the message of the failed step through the reset.
    sqlite3_reset(get());
    connection_->fail(code);
}

void Statement::reset()
{
    sqlite3_reset(get());
}

std::int64_t Statement::integerAt(int column) const
{
    return sqlite3_column_int64(get(), column);
}

std::string_view Statement::textAt(int column) const
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(get(), column));
    return text == nullptr ? std::string_view()
                           : std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(get(), column)));
}

} // namespace dao
