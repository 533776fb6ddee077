// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/FileCopy.h"
#include "platform/dao/Sqlite.h"
#include "platform/dao/TableDef.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace dao
{

/// The file behind a Database. Statements run on an SQLite connection in any case: on the file itself (SqliteStorage), or on a
/// private mirror of a file of another format (JetStorage). Everything above this class is the same for all formats.
///
/// Errors are DataErrors that name the file.
class Storage
{
public:
    using Progress = std::function<void(int percent)>;

    virtual ~Storage() = default;
    Storage(const Storage &) = delete;
    Storage &operator=(const Storage &) = delete;

    /// Full path of the file.
    virtual const QString &path() const = 0;
    virtual Connection &connection() = 0;
    virtual bool isReadOnly() const = 0;
    /// Whether connection() is a mirror, so that its indexes are not in the file and each write needs a transaction.
    virtual bool isMirror() const = 0;

    /// Takes over what other programs have changed in the file. To be called before a statement, outside a transaction. Returns
    /// whether rows may have changed.
    virtual bool refresh() = 0;
    /// Raises the error of a table that is in the file but cannot be read; returns when there is no such table.
    virtual void requireReadable(QStringView table) = 0;

    /// To be called before a transaction begins on the connection: 3027 where the file cannot be written, 3045 or 3260 while
    /// another program has it open or writes.
    virtual void beginWrite() = 0;
    /// Writes the transaction to the file, before the commit on the connection. An error means that the file is unchanged.
    virtual void commitWrite() = 0;
    /// After a rollback on the connection, of the whole transaction.
    virtual void abandonWrite() = 0;
    /// Inside a transaction, before the same change on the connection.
    virtual void createTable(const TableDef &definition) = 0;
    virtual void addField(const TableDef &table, const Field &field) = 0;

    /// Copies the committed state to `path`, which must not exist (75). Written under another name and renamed.
    virtual void copyTo(const QString &path, bool isInTransaction) = 0;
    /// A copy made in steps on another thread; `path` is an empty file.
    virtual std::unique_ptr<FileCopy> startCopy(const QString &path) = 0;
    /// Reads the whole file and returns its problems; empty for none. checkPages() does without comparing rows with indexes.
    virtual QStringList checkIntegrity(const Progress &progress) = 0;
    virtual QStringList checkPages() = 0;

protected:
    Storage() = default;
};

} // namespace dao
