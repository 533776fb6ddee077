// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Error.h"
#include "platform/jet/Pager.h"
#include "platform/jet/TableDefinition.h"
#include "platform/jet/Value.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace jet
{

/// A row as it is passed: its values in the order of TableDefinition::columns. Good until the call returns.
struct Row {
    RowPosition position;
    const std::vector<Value> &values;
};

enum class Access {
    /// The file is not touched, nor is its lock file. A change that was cut short is undone first all the same.
    ReadOnly,
    /// The file may be changed by a Transaction. As long as it is open, an entry in the lock file says so.
    ReadWrite,
};

struct DatabaseState;
class LockFile;
class OpenRollback;

/// A Jet 4 file. Every failure is an Error. What is damaged is named with table, page and row, and the other tables stay
/// readable. Pages are held once read: what the object shows is the file as it was then, until `refresh`.
class Database
{
public:
    /// 3024 no such file, 3051 cannot be read, 3031 another password, 3343 no Jet 4 file, 3049 its list of tables is damaged.
    /// For writing also 3045 no free slot in the lock file.
    static std::unique_ptr<Database> open(const QString &path, const QString &password, Access access = Access::ReadOnly);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    const QString &path() const;
    const Header &header() const;
    /// The user's tables, without the system tables. 3049 when the list is damaged, so that one might be missing from it;
    /// `definition` finds the others all the same.
    QStringList tableNames() const;
    /// By name without regard to case; good until `refresh`. 3078 no such table, 3049 damaged.
    const TableDefinition &definition(const QString &table) const;
    /// Passes every row in the order of the file. Returns how many, which is the definition's own count: 3049 when another
    /// number can be found, before the first row is passed, and for a row that cannot be taken apart, when its turn comes.
    std::uint32_t readRows(const QString &table, const std::function<void(const Row &)> &take) const;
    /// The values of one row; nothing when there is no row at the position.
    std::optional<std::vector<Value>> readRow(const QString &table, RowPosition position) const;

    /// The file as it was when it was opened or refreshed.
    const Stamp &stamp() const;
    /// When the file has changed since, drops all that was read of it and opens it again. Returns whether it has.
    bool refresh();

    /// Of a file that is open for writing: error 3045 when another user is present, naming the computers.
    void requireSoleUser();

    /// Gives back the memory of the pages that were read; they are read again when they are asked for.
    void releasePages();
    /// Whether what was read is of one piece: the file has not changed since, and no program was writing it.
    bool isSettled() const;

private:
    friend class Transaction;
    Database(std::unique_ptr<LockFile> lock, std::unique_ptr<DatabaseState> state);

    /// For writing alone, as is the rollback file.
    std::unique_ptr<LockFile> lock_;
    std::unique_ptr<OpenRollback> rollback_;
    std::unique_ptr<DatabaseState> state_;
};

} // namespace jet
