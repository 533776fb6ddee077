// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Database.h"

#include "platform/jet/CommitBytes.h"
#include "platform/jet/DatabaseState.h"
#include "platform/jet/OpenRollback.h"
#include "platform/jet/PageCommit.h"
#include "platform/jet/Properties.h"

namespace jet
{

DatabaseState::DatabaseState(const QString &path, const QString &userPassword)
    : password(userPassword), stamp(stampOf(path)), pager(path)
{
    if (pager.header().password != password) {
        throw Error(ErrorNumber::NotAValidPassword, QStringLiteral("Not a valid password for %1.").arg(path));
    }
    catalogue = naming(QStringLiteral("MSysObjects"), [&] { return readCatalogue(pager, rowPages); });
}

void DatabaseState::failDamaged(const QString &table, const QString &sentence) const
{
    throw Error(
        ErrorNumber::Damaged,
        QStringLiteral("%1 is damaged: table %2, %3. Repair it in the suite first, or take a copy from before the damage.")
            .arg(pager.path(), table, sentence));
}

std::vector<int> DatabaseState::writers() const
{
    return naming(QStringLiteral("MSysObjects"), [&] { return CommitBytes::writers(pager.page(0)); });
}

TableDefinition &DatabaseState::definition(const QString &table)
{
    const CatalogueEntry *entry = catalogue.find(table);
    if (!entry) {
        if (!catalogue.fault.isEmpty()) {
            failDamaged(QStringLiteral("MSysObjects"), catalogue.fault);
        }
        throw Error(ErrorNumber::TableNotFound, QStringLiteral("%1 has no table %2.").arg(pager.path(), table));
    }
    const auto known = definitions.find(entry->definitionPage);
    if (known != definitions.end()) {
        return known->second;
    }
    TableDefinition definition = naming(entry->name, [&] { return readDefinition(pager, entry->definitionPage); });
    definition.name = entry->name;
    definition.propertiesFault = entry->propertiesFault;
    try {
        const QHash<QString, bool> allowed =
            allowZeroLengthByColumn({reinterpret_cast<const unsigned char *>(entry->properties.constData()),
                                     static_cast<std::size_t>(entry->properties.size())});
        for (ColumnDefinition &column : definition.columns) {
            if (const auto found = allowed.constFind(column.name.toLower()); found != allowed.constEnd()) {
                column.allowsZeroLength = *found;
            }
        }
    } catch (const Fault &fault) {
        definition.propertiesFault = fault.sentence();
    }
    return definitions.emplace(entry->definitionPage, std::move(definition)).first->second;
}

void DatabaseState::forgetDefinitions()
{
    definitions.clear();
    rowPages.forget();
    catalogue = naming(QStringLiteral("MSysObjects"), [&] { return readCatalogue(pager, rowPages); });
}

Database::Database(std::unique_ptr<LockFile> lock, std::unique_ptr<DatabaseState> state)
    : lock_(std::move(lock)), rollback_(lock_ ? std::make_unique<OpenRollback>(state->pager.path()) : nullptr),
      state_(std::move(state))
{
}

Database::~Database()
{
    if (lock_) {
        // Where others are present, the last of them removes it.
        basic::runOrIgnore([this] {
            const auto others = lock_->lockOthers(LockFile::Wait::No);
            rollback_.reset();
            removeIdleRollback(path());
        });
    }
}

void Database::requireSoleUser()
{
    lock_->lockOthers();
}

namespace
{

/// Undoes a change that was cut short. Who only reads becomes a user for that alone: a user is in the way of those who write.
void undoUnfinished(const QString &path, LockFile *lock)
{
    if (!lock) {
        LockFile::awaitWriter(path);
    }
    if (!hasRollback(path)) {
        return;
    }
    const auto own = lock ? nullptr : std::make_unique<LockFile>(path);
    if (hasRollback(path)) {
        const auto others = (lock ? *lock : *own).lockOthers();
        rollBack(path);
    }
}

} // namespace

std::unique_ptr<Database> Database::open(const QString &path, const QString &password, Access access)
{
    std::unique_ptr<LockFile> lock;
    if (access == Access::ReadWrite) {
        // What is no Jet file gets no lock file; one that was left halfway may have any length.
        if (!hasRollback(path)) {
            Pager{path};
        }
        lock = std::make_unique<LockFile>(path);
    }
    undoUnfinished(path, lock.get());
    return std::unique_ptr<Database>(new Database(std::move(lock), std::make_unique<DatabaseState>(path, password)));
}

const QString &Database::path() const
{
    return state_->pager.path();
}

const Header &Database::header() const
{
    return state_->pager.header();
}

QStringList Database::tableNames() const
{
    if (!state_->catalogue.fault.isEmpty()) {
        state_->failDamaged(QStringLiteral("MSysObjects"), state_->catalogue.fault);
    }
    QStringList names;
    for (const CatalogueEntry &entry : state_->catalogue.tables) {
        if (!entry.isSystem) {
            names.append(entry.name);
        }
    }
    return names;
}

const TableDefinition &Database::definition(const QString &table) const
{
    return state_->definition(table);
}

std::uint32_t Database::readRows(const QString &table, const std::function<void(const Row &)> &take) const
{
    const TableDefinition &definition = state_->definition(table);
    return state_->naming(definition.name, [&] {
        const std::vector<std::uint32_t> pages = state_->rowPages.of(definition);
        RowDecoder decoder(state_->pager, definition);
        std::vector<Value> values;
        forEachRow(state_->pager, definition.page, pages, [&](RowPosition position, Bytes bytes) {
            decoder.decode(bytes, values);
            take({position, values});
        });
        return definition.rowCount;
    });
}

std::optional<std::vector<Value>> Database::readRow(const QString &table, RowPosition position) const
{
    const TableDefinition &definition = state_->definition(table);
    return state_->naming(definition.name, [&] {
        return locating(position.page, position.slot, [&]() -> std::optional<std::vector<Value>> {
            const std::optional<Bytes> bytes = findRow(state_->pager, definition.page, position);
            if (!bytes) {
                return std::nullopt;
            }
            std::vector<Value> values;
            RowDecoder(state_->pager, definition).decode(*bytes, values);
            return values;
        });
    });
}

const Stamp &Database::stamp() const
{
    return state_->stamp;
}

void Database::releasePages()
{
    state_->pager.releasePages();
}

bool Database::isSettled() const
{
    return stampOf(path()) == state_->stamp && state_->writers().empty();
}

bool Database::refresh()
{
    undoUnfinished(path(), lock_.get());
    if (stampOf(path()) == state_->stamp) {
        return false;
    }
    // Made before the old one goes, so that a file that cannot be read leaves the object as it was.
    state_ = std::make_unique<DatabaseState>(path(), state_->password);
    return true;
}

} // namespace jet
