// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Database.h"
#include "platform/jet/NewTable.h"
#include "platform/jet/TableWriter.h"

#include <memory>

namespace jet
{

/// Changes of a file that are made together or not at all. While it lives no other program can open the file for sharing. Without
/// `commit` nothing is changed. An error of a value or a key leaves the transaction as it was before the call; after an error
/// that names damage (3049) it can only be given up. One at a time for each Database.
class Transaction
{
public:
    /// 3027 the database was opened for reading, 3045 another program has the file open, 3197 the file has changed since it was
    /// read (call Database::refresh and read it again), 3428 another program was stopped while it wrote.
    explicit Transaction(Database &database);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    /// Values in the order of TableDefinition::columns, with the types that Value documents; null for an autonumber gives the
    /// next. 3022 duplicate key, 3058 null in a key, 3163 text too long, 3421 value of another type, 3027 a table that cannot be
    /// written.
    Inserted insert(const QString &table, const std::vector<Value> &values);
    /// False when there is no row at the position. The row keeps its position.
    bool update(const QString &table, RowPosition position, const Changes &changes);
    bool remove(const QString &table, RowPosition position);
    /// The row with a primary key, its values in the order of the key's columns. 3265 the table has no such key.
    std::optional<RowPosition> findByKey(const QString &table, const std::vector<Value> &key);

    /// 3010 there is a table of that name.
    void createTable(const NewTable &table);
    /// False in every row that is there. 3191 there is a field of that name.
    void addBooleanColumn(const QString &table, const QString &column);

    /// Durable when it returns. 3026 disk full, 3043 disk error; then nothing is changed, unless the disk fails from then on:
    /// Database::refresh finds what the file has. Returns the numbers of the pages that were written.
    std::vector<std::uint32_t> commit();

private:
    class Work;
    std::unique_ptr<Work> work_;
};

} // namespace jet
