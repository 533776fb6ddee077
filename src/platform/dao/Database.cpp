// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Database.h"

#include "platform/dao/CommitScope.h"
#include "platform/dao/Conversion.h"
#include "platform/dao/Engine.h"
#include "platform/dao/RecordsetState.h"
#include "platform/dao/ValueCheck.h"

#include <algorithm>
#include <utility>

namespace dao
{

Database::Database(std::unique_ptr<State> state) : state_(std::move(state)) {}
Database::~Database() = default;

const QString &Database::Name() const
{
    return state_->engine->path();
}

bool Database::isReadOnly() const
{
    return state_->engine->storage().isReadOnly();
}

bool Database::isMirrored() const
{
    return state_->engine->storage().isMirror();
}

Recordset Database::OpenRecordset(const QString &sql, RecordsetType type)
{
    return Recordset(std::make_unique<Recordset::State>(state_->engine, sql, type));
}

int Database::Execute(const QString &sql)
{
    auto [query, literals] = state_->engine->action(sql);
    for (const auto &[literal, field] : query->translation.assignments) {
        Value &value = literals[static_cast<std::size_t>(literal)];
        value = convertedFor(field, value);
    }
    int parameter = 0;
    for (const Value &literal : literals) {
        query->statement->bind(++parameter, literal);
    }
    return state_->engine->write(*query->statement);
}

void Database::Append(const TableDef &definition)
{
    Engine &engine = *state_->engine;
    engine.refreshSchema();
    if (engine.catalog().find(definition.Name())) {
        throw DataError(DataErrorNumber::TableExists,
                        QStringLiteral("The table %1 exists already in %2.").arg(definition.Name(), Name()));
    }
    if (definition.Fields().empty()) {
        throw DataError(DataErrorNumber::SyntaxError, QStringLiteral("The table %1 has no fields.").arg(definition.Name()));
    }
    CommitScope scope(*this);
    try {
        engine.prepareWrite();
        engine.storage().createTable(definition);
        for (const QByteArray &sql : Catalog::createStatements(definition)) {
            Statement statement(engine.connection(), sql);
            engine.write(statement);
        }
    } catch (const basic::RunTimeError &) {
        scope.rollback();
        throw;
    }
    engine.forgetSchema();
    scope.commit();
}

void Database::Append(const QString &table, const Field &field)
{
    Engine &engine = *state_->engine;
    const TableDef definition = tableDef(table);
    if (definition.findField(field.name) != nullptr) {
        throw DataError(DataErrorNumber::FieldExists,
                        QStringLiteral("The table %1 has a field %2 already.").arg(table, field.name));
    }
    if (field.autoIncrement) {
        throw basic::RunTimeError(
            basic::ErrorNumber::InvalidArgument,
            QStringLiteral("An autonumber cannot be added to the table %1, which is in the file already.").arg(table));
    }
    CommitScope scope(*this);
    engine.prepareWrite();
    engine.storage().addField(definition, field);
    Statement statement(engine.connection(),
                        "ALTER TABLE " + quoteName(definition.Name()) + " ADD COLUMN " + Catalog::columnDeclaration(field));
    engine.write(statement);
    engine.forgetSchema();
    scope.commit();
}

void Database::Append(const QString &table, const Index &index)
{
    Engine &engine = *state_->engine;
    engine.changeIndexes(Catalog::indexStatement(tableDef(table), index));
}

void Database::removeIndex(const QString &table, const QString &index)
{
    Engine &engine = *state_->engine;
    const TableDef definition = tableDef(table);
    const auto &indexes = definition.Indexes();
    const auto found = std::find_if(indexes.begin(), indexes.end(), [&index](const Index &one) {
        return !one.primary && one.name.compare(index, Qt::CaseInsensitive) == 0;
    });
    if (found == indexes.end()) {
        throw DataError(DataErrorNumber::ItemNotFound,
                        QStringLiteral("There is no index %1 of %2 (item not found).").arg(index, definition.Name()));
    }
    engine.changeIndexes("DROP INDEX " + Catalog::storedIndexName(definition, *found));
}

TableDef Database::tableDef(const QString &name) const
{
    state_->engine->refreshSchema();
    const auto info = state_->engine->catalog().find(name);
    if (!info) {
        throw DataError(DataErrorNumber::ItemNotFound,
                        QStringLiteral("There is no table %1 in %2 (item not found).").arg(name, Name()));
    }
    TableDef definition(info->name);
    for (const Field &field : info->fields) {
        definition.Append(field);
    }
    for (const Index &index : info->indexes) {
        definition.Append(index);
    }
    return definition;
}

void Database::backupTo(const QString &path) const
{
    state_->engine->storage().copyTo(path, state_->engine->isInTransaction());
}

std::unique_ptr<FileCopy> Database::startCopy(const QString &path) const
{
    return state_->engine->storage().startCopy(path);
}

QStringList Database::checkIntegrity(const std::function<void(int percent)> &progress) const
{
    return state_->engine->storage().checkIntegrity(progress);
}

QStringList Database::mismatches(const QString &table) const
{
    const auto info = state_->engine->catalog().find(table);
    return info ? mismatchesOf(state_->engine->connection(), *info) : QStringList();
}

QStringList Database::checkPages() const
{
    return state_->engine->storage().checkPages();
}

QStringList Database::tableNames() const
{
    state_->engine->refreshSchema();
    return state_->engine->catalog().tableNames();
}

} // namespace dao
