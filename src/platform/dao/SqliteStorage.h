// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Storage.h"

#include <memory>

namespace dao
{

/// A database file of this program: SQLite with an application id and a password, rows written where they are stored.
class SqliteStorage : public Storage
{
public:
    /// As Workspace::OpenDatabase, for an existing file.
    static std::unique_ptr<SqliteStorage> open(const QString &path, bool exclusive, bool readOnly, const QString &password);
    /// As Workspace::CreateDatabase, for a path that does not exist.
    static std::unique_ptr<SqliteStorage> create(const QString &path, const QString &password);

    const QString &path() const override { return connection_.path(); }
    Connection &connection() override { return connection_; }
    bool isReadOnly() const override { return connection_.isReadOnly(); }
    bool isMirror() const override { return false; }

    // SQLite reads and writes the file itself.
    bool refresh() override { return false; }
    void requireReadable(QStringView) override {}
    void beginWrite() override {}
    void commitWrite() override {}
    void abandonWrite() override {}
    void createTable(const TableDef &) override {}
    void addField(const TableDef &, const Field &) override {}

    void copyTo(const QString &path, bool isInTransaction) override;
    std::unique_ptr<FileCopy> startCopy(const QString &path) override { return FileCopy::ofSqlite(connection_, path); }
    QStringList checkIntegrity(const Progress &progress) override;
    QStringList checkPages() override;

private:
    SqliteStorage(Connection connection, bool exclusive) : connection_(std::move(connection)), exclusive_(exclusive) {}

    Connection connection_;
    bool exclusive_;
};

} // namespace dao
