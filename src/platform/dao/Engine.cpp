// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Engine.h"

#include "platform/basic/Numbers.h"

#include <algorithm>
#include <array>
#include <limits>

namespace dao
{

namespace
{

constexpr qsizetype MaxQueries = 500;

/// A name in lower case without an allocation, for the plain names that nearly all are.
class FoldedName
{
public:
    explicit FoldedName(QAnyStringView name)
    {
        name.visit([this](auto view) { fold(view); });
    }

    QStringView view() const { return long_.isEmpty() ? QStringView(short_.data(), size_) : QStringView(long_); }

private:
    template <typename View> void fold(View view)
    {
        if (view.size() > static_cast<qsizetype>(short_.size())) {
            long_ = QAnyStringView(view).toString().toLower();
            return;
        }
        for (qsizetype i = 0; i < view.size(); ++i) {
            const auto unit =
                static_cast<char16_t>(static_cast<std::make_unsigned_t<decltype(codeOf(view[i]))>>(codeOf(view[i])));
            if (unit >= 0x80) {
                long_ = QAnyStringView(view).toString().toLower();
                return;
            }
            short_[static_cast<std::size_t>(i)] = unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
        }
        size_ = view.size();
    }

    static int codeOf(QChar c) { return c.unicode(); }
    static int codeOf(QLatin1Char c) { return c.unicode(); }
    static int codeOf(char c) { return static_cast<unsigned char>(c); }
    static int codeOf(char8_t c) { return c; }

    std::array<char16_t, 64> short_;
    qsizetype size_ = 0;
    QString long_;
};

} // namespace

int Query::findColumn(QAnyStringView name) const
{
    const FoldedName folded(name);
    const QStringView wanted = folded.view();
    const auto found = std::find_if(foldedNames.begin(), foldedNames.end(), [wanted](const QString &column) {
        // Most names differ in length or at their end, which is quicker to see than to compare.
        return column.size() == wanted.size() && !wanted.isEmpty() && column.back() == wanted.back()
            && QStringView(column) == wanted;
    });
    if (found != foldedNames.end()) {
        return static_cast<int>(found - foldedNames.begin());
    }
    const qsizetype dot = wanted.indexOf(u'.');
    for (std::size_t i = 0; dot > 0 && i < foldedNames.size(); ++i) {
        const ResultColumn &column = translation.columns[i];
        if (wanted.mid(dot + 1) == foldedNames[i] && wanted.left(dot).compare(column.table, Qt::CaseInsensitive) == 0) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

bool Query::isUpdatable() const
{
    return translation.table
        && std::all_of(translation.columns.begin(), translation.columns.end(),
                       [](const ResultColumn &column) { return column.field >= 0; });
}

Engine::Engine(std::unique_ptr<Storage> storage, bool exclusive)
    : storage_(std::move(storage)), catalog_(storage_->connection()), exclusive_(exclusive)
{
}

Engine::BoundQuery Engine::select(const QString &sql)
{
    return find(selects_, sql);
}

Engine::BoundQuery Engine::action(const QString &sql)
{
    return find(actions_, sql);
}

Engine::BoundQuery Engine::find(QueryCache &cache, const QString &sql)
{
    TokenList list = tokenise(sql);
    if (!isInTransaction() && storage_->refresh()) {
        ++changeStamp_;
        refreshSchema();
    }
    if (cache.queries.size() > MaxQueries) {
        cache.queries.clear();
    }
    std::shared_ptr<Query> query = cache.queries.value(list.shape);
    if (!query) {
        try {
            query = prepare(list, cache.translate);
        } catch (const DataError &) {
            // The name that was not found may be one that another program has added since.
            if (!refreshSchema()) {
                throw;
            }
            query = prepare(list, cache.translate);
        }
        cache.queries.insert(list.shape, query);
    }
    return {std::move(query), std::move(list.literals)};
}

std::shared_ptr<Query> Engine::prepare(const TokenList &list, Translate translate)
{
    auto query = std::make_shared<Query>();
    query->translation = translate(list, [this](QStringView name) {
        auto table = catalog_.find(name);
        if (!table) {
            storage_->requireReadable(name);
        }
        return table;
    });
    for (const ResultColumn &column : query->translation.columns) {
        query->foldedNames.push_back(column.name.toLower());
    }
    query->statement.emplace(connection(), query->translation.sql);
    return query;
}

void Engine::forgetSchema()
{
    selects_.queries.clear();
    actions_.queries.clear();
    statements_.clear();
    catalog_.forget();
}

bool Engine::refreshSchema()
{
    const bool isOutdated = catalog_.isOutdated();
    if (isOutdated) {
        forgetSchema();
    }
    return isOutdated;
}

Statement &Engine::prepared(const QByteArray &sql)
{
    std::shared_ptr<Statement> &statement = statements_[sql];
    if (!statement) {
        statement = std::make_shared<Statement>(connection(), sql);
    }
    return *statement;
}

int Engine::write(Statement &statement)
{
    if (storage_->isMirror() && scopes_ == 0) {
        return writeAlone(statement);
    }
    beginScopes();
    ++changeStamp_;
    try {
        while (statement.step()) {}
    } catch (const DataError &error) {
        // A full disk and the like can undo the whole transaction, earlier writes of the scopes included.
        if (begunScopes_ > 0 && connection().isAutocommit()) {
            lost_ = error;
            begunScopes_ = 0;
            ++transactionEpoch_;
            storage_->abandonWrite();
            // Tables made inside the scopes are gone with them.
            forgetSchema();
        }
        if (error.number() == static_cast<int>(DataErrorNumber::CannotOpenFile)) {
            throw DataError(DataErrorNumber::ReadOnly,
                            QStringLiteral("%1 cannot be written, since no file can be made in its folder.").arg(path()));
        }
        throw;
    }
    return connection().changes();
}

void Engine::changeIndexes(const QByteArray &sql)
{
    if (storage_->isMirror()) {
        connection().execute(sql);
    } else {
        Statement statement(connection(), sql);
        write(statement);
    }
    forgetSchema();
}

int Engine::writeAlone(Statement &statement)
{
    openScope();
    try {
        const int rows = write(statement);
        commitScope();
        return rows;
    } catch (const basic::RunTimeError &) {
        if (scopes_ > 0) {
            rollbackScope();
        }
        throw;
    }
}

std::int32_t Engine::nextKey(TableInfo &table)
{
    beginScopes();
    const bool isCurrent = begunScopes_ > 0 && table.lastKeyEpoch == transactionEpoch_;
    if (!isCurrent) {
        Statement &statement = prepared("SELECT seq FROM sqlite_sequence WHERE name = ?1");
        statement.bind(1, table.name);
        const ResetAtEnd resetAtEnd(statement);
        table.lastKey = std::max(table.lastKey, statement.step() ? statement.integerAt(0) : 0);
        table.lastKeyEpoch = transactionEpoch_;
    }
    if (table.lastKey >= std::numeric_limits<std::int32_t>::max()) {
        throw basic::RunTimeError(basic::ErrorNumber::Overflow, QStringLiteral("Overflow: %1 has no more keys.").arg(table.name));
    }
    return static_cast<std::int32_t>(++table.lastKey);
}

void Engine::openScope()
{
    ++scopes_;
}

void Engine::beginScopes()
{
    if (lost_) {
        throw lostError();
    }
    while (begunScopes_ < scopes_) {
        if (begunScopes_ == 0) {
            storage_->beginWrite();
        }
        connection().execute(begunScopes_ == 0 ? "BEGIN IMMEDIATE" : "SAVEPOINT scope");
        if (begunScopes_ == 0) {
            ++transactionEpoch_;
        }
        ++begunScopes_;
    }
}

DataError Engine::lostError() const
{
    return {static_cast<DataErrorNumber>(lost_->number()),
            lost_->description() + QStringLiteral(" Everything since the step began was undone.")};
}

void Engine::endLostScope()
{
    if (--scopes_ == 0) {
        lost_.reset();
    }
}

void Engine::endTransaction(const QByteArray &sql)
{
    --scopes_;
    const bool hasBegun = begunScopes_ > scopes_;
    if (hasBegun) {
        if (scopes_ == 0 && sql == "COMMIT") {
            storage_->commitWrite();
        }
        begunScopes_ = scopes_;
        ++transactionEpoch_;
        connection().execute(sql);
    }
}

void Engine::commitScope()
{
    if (lost_) {
        const DataError reason = lostError();
        endLostScope();
        throw DataError(reason);
    }
    try {
        endTransaction(scopes_ == 1 ? "COMMIT" : "RELEASE scope");
    } catch (const DataError &error) {
        ++changeStamp_;
        begunScopes_ = 0;
        if (scopes_ > 0) {
            lost_ = error;
        }
        if (!connection().isAutocommit()) {
            connection().execute("ROLLBACK");
        }
        storage_->abandonWrite();
        forgetSchema();
        throw;
    }
}

void Engine::rollbackScope()
{
    ++changeStamp_;
    if (lost_) {
        endLostScope();
        return;
    }
    const bool isWhole = scopes_ == 1;
    endTransaction(isWhole ? "ROLLBACK" : "ROLLBACK TO scope; RELEASE scope");
    if (isWhole) {
        storage_->abandonWrite();
    }
    // Tables made inside the scope are gone with it.
    forgetSchema();
}

} // namespace dao
