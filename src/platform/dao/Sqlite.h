// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/DataError.h"
#include "platform/dao/Value.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <memory>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

/// Owners of SQLite's C objects; for this module only.
namespace dao
{

class Connection
{
public:
    enum class Mode { ReadWrite, ReadOnly };
    /// Opens an existing file and sets up this program's collation, functions and waiting time; reads nothing of it yet.
    Connection(const QString &path, Mode mode);
    /// An empty private database in memory; `path` is the name in error messages.
    static Connection inMemory(const QString &path);

    sqlite3 *get() const { return handle_.get(); }
    const QString &path() const { return path_; }
    bool isReadOnly() const;
    /// True outside a transaction; a full disk may end one.
    bool isAutocommit() const;
    int changes() const;

    /// Runs statements without parameters.
    void execute(const QByteArray &sql);
    /// One whole number, 0 when there is no row.
    std::int64_t number(const QByteArray &sql);
    /// Raises the data layer's error for SQLite's result code.
    [[noreturn]] void fail(int code) const;

private:
    Connection(const QString &path, const char *file, int flags, const char *vfs);

    struct Closer {
        void operator()(sqlite3 *handle) const;
    };
    std::unique_ptr<sqlite3, Closer> handle_;
    QString path_;
};

/// Text in double quotes for use as a name in SQLite's SQL.
QByteArray quoteName(const QString &name);

class Statement
{
public:
    /// Raises 3075 when the text cannot be read.
    Statement(const Connection &connection, const QByteArray &sql);

    /// Parameters count from 1 and columns from 0, as in SQLite.
    void bind(int parameter, const Value &value);
    void bindKey(int parameter, std::int64_t key);
    void bindBytes(int parameter, const QByteArray &bytes);

    /// True when there is a row; the statement is ready to run again after the last row and after an error.
    bool step();
    void reset();
    sqlite3_stmt *get() const { return handle_.get(); }

    std::int64_t integerAt(int column) const;
    std::string_view textAt(int column) const;

private:
    struct Finalizer {
        void operator()(sqlite3_stmt *handle) const;
    };
    void check(int code) const;

    const Connection *connection_;
    std::unique_ptr<sqlite3_stmt, Finalizer> handle_;
};

/// Resets a statement at the end of a scope.
class ResetAtEnd
{
public:
    explicit ResetAtEnd(Statement &statement) : statement_(statement) {}
    ~ResetAtEnd() { statement_.reset(); }
    ResetAtEnd(const ResetAtEnd &) = delete;
    ResetAtEnd &operator=(const ResetAtEnd &) = delete;

private:
    Statement &statement_;
};

} // namespace dao
