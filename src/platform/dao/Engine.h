// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Catalog.h"
#include "platform/dao/Database.h"
#include "platform/dao/Dialect.h"
#include "platform/dao/Storage.h"

#include <QHash>

#include <memory>
#include <optional>
#include <vector>

namespace dao
{

/// A prepared statement, with what is known of its result.
struct Query {
    Translation translation;
    /// Names of the columns in lower case, for finding them.
    std::vector<QString> foldedNames;
    std::optional<Statement> statement;
    /// Reads one row of the query's table again, by its key; made when first needed.
    std::optional<Statement> rowStatement;

    /// -1 when there is no such column. "table.field" works as well as "field", which means the first of that name.
    int findColumn(QAnyStringView name) const;
    /// All columns are plain fields of one table, so its rows can be written.
    bool isUpdatable() const;
};

/// One open file: its storage, its prepared statements, its transaction. Recordsets share it with the database object.
class Engine
{
public:
    Engine(std::unique_ptr<Storage> storage, bool exclusive);

    Storage &storage() { return *storage_; }
    Connection &connection() { return storage_->connection(); }
    Catalog &catalog() { return catalog_; }
    const QString &path() const { return storage_->path(); }
    bool isExclusive() const { return exclusive_; }

    struct BoundQuery {
        std::shared_ptr<Query> query;
        std::vector<Value> literals;
    };
    BoundQuery select(const QString &sql);
    BoundQuery action(const QString &sql);
    /// To be called when tables were added or changed: nothing prepared is valid any more.
    void forgetSchema();
    /// Forgets the schema when a writer on another connection has changed it; returns whether that was so.
    bool refreshSchema();

    /// A statement of ours by its text.
    Statement &prepared(const QByteArray &sql);
    /// Runs a writing statement inside the open scopes, if there are any; returns the rows touched.
    int write(Statement &statement);
    /// Creates or drops an index, in the mirror alone where there is one.
    void changeIndexes(const QByteArray &sql);
    /// The next autonumber of a table.
    std::int32_t nextKey(TableInfo &table);

    /// Changes with every write of this connection, so that a reader knows when to read again.
    std::uint64_t changeStamp() const { return changeStamp_; }

    /// Begins the transaction of the open scopes, if it has not begun; for a change that comes before the first write.
    void prepareWrite() { beginScopes(); }

    void openScope();
    void commitScope();
    void rollbackScope();
    /// A scope with writes of its own, waiting for its commit.
    bool isInTransaction() const { return !storage_->connection().isAutocommit(); }

private:
    using Translate = Translation (*)(const TokenList &, const TableLookup &);

    /// Prepared texts of one kind by their shape; a select must never be found where an action is asked for, nor the reverse.
    struct QueryCache {
        Translate translate;
        QHash<QString, std::shared_ptr<Query>> queries = {};
    };

    /// A statement outside the scopes, in a transaction of its own.
    int writeAlone(Statement &statement);
    BoundQuery find(QueryCache &cache, const QString &sql);
    std::shared_ptr<Query> prepare(const TokenList &list, Translate translate);
    void beginScopes();
    void endTransaction(const QByteArray &sql);
    DataError lostError() const;
    void endLostScope();

    std::unique_ptr<Storage> storage_;
    Catalog catalog_;
    bool exclusive_;
    QueryCache selects_{translateSelect};
    QueryCache actions_{translateAction};
    QHash<QByteArray, std::shared_ptr<Statement>> statements_;
    std::uint64_t changeStamp_ = 1;
    std::uint64_t transactionEpoch_ = 1;
    int scopes_ = 0;
    /// How many of the open scopes have begun in the file; the outermost is a transaction, the others are savepoints.
    int begunScopes_ = 0;
    /// Why the transaction of the open scopes is gone.
    std::optional<DataError> lost_;
};

struct Database::State {
    std::shared_ptr<Engine> engine;
};

} // namespace dao
