// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/RecordsetState.h"

#include <algorithm>
#include <utility>

namespace dao
{

namespace
{

[[noreturn]] void failDeleted()
{
    throw DataError(DataErrorNumber::RecordDeleted, QStringLiteral("Record is deleted."));
}

/// Null in every field but Boolean, which has none.
Value emptyValue(const Field &field)
{
    return field.type == FieldType::Boolean ? Value(false) : Value(Null{});
}

} // namespace

Recordset::State::State(std::shared_ptr<Engine> openEngine, const QString &sql, RecordsetType type)
    : State(openEngine, openEngine->select(sql), type)
{
}

Recordset::State::State(std::shared_ptr<Engine> openEngine, Engine::BoundQuery bound, RecordsetType type)
    : engine(std::move(openEngine)), query(std::move(bound.query)), kind(type),
      rows(static_cast<int>(query->translation.columns.size()), query->translation.table != nullptr)
{
    Statement &statement = *query->statement;
    const ResetAtEnd resetAtEnd(statement);
    int parameter = 0;
    for (const Value &literal : bound.literals) {
        statement.bind(++parameter, literal);
    }
    while (statement.step()) {
        rows.append(statement);
    }
    openStamp = stamp = engine->changeStamp();
}

void Recordset::State::moveBy(int direction)
{
    dropEdit();
    const int count = rows.count();
    do {
        position = std::clamp(position + direction, -1, count);
    } while (isOnRow() && isRemoved(position));
    stamp = openStamp;
}

void Recordset::State::moveToEdge(int edge)
{
    dropEdit();
    position = edge;
}

void Recordset::State::requireRow() const
{
    if (!isOnRow()) {
        throw DataError(DataErrorNumber::NoCurrentRecord, QStringLiteral("No current record."));
    }
    if (isRemoved(position)) {
        failDeleted();
    }
}

Statement &Recordset::State::rowStatement()
{
    if (!query->rowStatement) {
        const TableInfo &table = *query->translation.table;
        QByteArray sql;
        for (const ResultColumn &column : query->translation.columns) {
            sql += (sql.isEmpty() ? "SELECT " : ", ") + table.quotedFields[static_cast<std::size_t>(column.field)];
        }
        query->rowStatement.emplace(engine->connection(), sql + " FROM " + table.quotedName + " WHERE rowid = ?1");
    }
    return *query->rowStatement;
}

void Recordset::State::refresh(bool always)
{
    const bool isFresh = kind == RecordsetType::Snapshot || stamp == engine->changeStamp() || !query->isUpdatable();
    if (isFresh && !always) {
        return;
    }
    Statement &statement = rowStatement();
    const ResetAtEnd resetAtEnd(statement);
    statement.bindKey(1, rows.key(position));
    if (!statement.step()) {
        failDeleted();
    }
    rows.replace(position, statement);
    stamp = engine->changeStamp();
}

TableInfo &Recordset::State::requireTable() const
{
    if (kind == RecordsetType::Snapshot || !query->isUpdatable()) {
        throw DataError(
            DataErrorNumber::ReadOnly,
            QStringLiteral("This set of %1 can only be read: it is a snapshot or reads several tables.").arg(engine->path()));
    }
    return *query->translation.table;
}

void Recordset::State::dropEdit()
{
    editing = Editing::None;
    pending.clear();
}

void Recordset::State::insertRow()
{
    TableInfo &table = requireTable();
    if (!table.insert) {
        QByteArray names;
        QByteArray marks;
        for (const QByteArray &field : table.quotedFields) {
            names += (names.isEmpty() ? "" : ", ") + field;
            marks += marks.isEmpty() ? "?" : ", ?";
        }
        table.insert = std::make_unique<Statement>(engine->connection(),
                                                   "INSERT INTO " + table.quotedName + " (" + names + ") VALUES (" + marks + ')');
    }
    for (std::size_t i = 0; i < table.fields.size(); ++i) {
        const Value value = pending[i] ? *pending[i] : emptyValue(table.fields[i]);
        if (static_cast<int>(i) == table.keyField && std::holds_alternative<Null>(value)) {
            throw DataError(DataErrorNumber::NullKey,
                            QStringLiteral("The key %1 of %2 cannot be null.").arg(table.fields[i].name, table.name));
        }
        table.insert->bind(static_cast<int>(i) + 1, value);
    }
    engine->write(*table.insert);
    if (table.hasAutonumber()) {
        const auto key = std::get<std::int32_t>(*pending[static_cast<std::size_t>(table.keyField)]);
        table.lastKey = std::max<std::int64_t>(table.lastKey, key);
    }
}

void Recordset::State::updateRow()
{
    requireRow();
    const TableInfo &table = requireTable();
    QByteArray assignments;
    std::vector<const Value *> values;
    for (std::size_t column = 0; column < query->translation.columns.size(); ++column) {
        const auto field = static_cast<std::size_t>(query->translation.columns[column].field);
        const bool isChanged = pending[field] && !rows.holds(rows.cell(position, static_cast<int>(column)), *pending[field]);
        const bool isSeen = std::find(values.begin(), values.end(), pending[field] ? &*pending[field] : nullptr) != values.end();
        if (isChanged && !isSeen) {
            assignments += (assignments.isEmpty() ? "" : ", ") + table.quotedFields[field] + " = ?";
            values.push_back(&*pending[field]);
        }
    }
    // Writing what is there already would cost a wait for the disk and change nothing.
    if (values.empty()) {
        return;
    }
    Statement &statement = engine->prepared("UPDATE " + table.quotedName + " SET " + assignments + " WHERE rowid = ?");
    int parameter = 0;
    for (const Value *value : values) {
        statement.bind(++parameter, *value);
    }
    statement.bindKey(++parameter, rows.key(position));
    if (engine->write(statement) == 0) {
        failDeleted();
    }
    if (table.keyField >= 0 && pending[static_cast<std::size_t>(table.keyField)]) {
        rows.setKey(position, std::get<std::int32_t>(*pending[static_cast<std::size_t>(table.keyField)]));
    }
}

void Recordset::State::removeRow()
{
    const TableInfo &table = requireTable();
    requireRow();
    Statement &statement = engine->prepared("DELETE FROM " + table.quotedName + " WHERE rowid = ?");
    statement.bindKey(1, rows.key(position));
    const int deleted = engine->write(statement);
    removed.resize(static_cast<std::size_t>(rows.count()));
    removed[static_cast<std::size_t>(position)] = true;
    ++removedCount;
    if (deleted == 0) {
        failDeleted();
    }
}

} // namespace dao
