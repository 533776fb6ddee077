// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Database.h"

#include "platform/jet/Catalogue.h"
#include "platform/jet/Properties.h"
#include "platform/jet/RowReader.h"

#include <map>

namespace jet
{

struct Database::State {
    State(const QString &path, const QString &userPassword);

    /// Runs `body`; its Fault goes on as an Error that names the file and the table.
    template <typename Body> auto naming(const QString &table, Body &&body) const
    {
        try {
            return body();
        } catch (const Fault &fault) {
            failDamaged(table, fault.sentence());
        }
    }
    [[noreturn]] void failDamaged(const QString &table, const QString &sentence) const;

    const TableDefinition &definition(const QString &table);

    QString password;
    Stamp stamp;
    Pager pager;
    RowPages rowPages{pager};
    Catalogue catalogue;
    /// By the page of the definition.
    std::map<std::uint32_t, TableDefinition> definitions;
};

Database::State::State(const QString &path, const QString &userPassword)
    : password(userPassword), stamp(stampOf(path)), pager(path)
{
    if (pager.header().password != password) {
        throw Error(ErrorNumber::NotAValidPassword, QStringLiteral("Not a valid password for %1.").arg(path));
    }
    catalogue = naming(QStringLiteral("MSysObjects"), [&] { return readCatalogue(pager, rowPages); });
}

void Database::State::failDamaged(const QString &table, const QString &sentence) const
{
    throw Error(
        ErrorNumber::Damaged,
        QStringLiteral("%1 is damaged: table %2, %3. Repair it in the suite first, or take a copy from before the damage.")
            .arg(pager.path(), table, sentence));
}

const TableDefinition &Database::State::definition(const QString &table)
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

Database::Database(std::unique_ptr<State> state) : state_(std::move(state)) {}

Database::~Database() = default;

std::unique_ptr<Database> Database::open(const QString &path, const QString &password)
{
    return std::unique_ptr<Database>(new Database(std::make_unique<State>(path, password)));
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

bool Database::refresh()
{
    if (stampOf(path()) == state_->stamp) {
        return false;
    }
    // Made before the old one goes, so that a file that cannot be read leaves the object as it was.
    state_ = std::make_unique<State>(path(), state_->password);
    return true;
}

} // namespace jet
