// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/JetWriter.h"

#include "platform/dao/DataError.h"
#include "platform/dao/JetValues.h"
#include "platform/dao/RowStore.h"

#include <algorithm>
#include <optional>

namespace dao
{

namespace
{

constexpr std::int64_t SlotsPerPage = 256;

/// Reads rows of a mirrored table by their number, as values of the file's columns.
class MirrorRows
{
public:
    MirrorRows(const Connection &mirror, const jet::TableDefinition &table) : table_(table), statement_(mirror, select(table)) {}

    /// In the order of the table's columns, null for one that is not mirrored; nothing when there is no such row.
    std::optional<std::vector<jet::Value>> read(std::int64_t number)
    {
        const ResetAtEnd resetAtEnd(statement_);
        statement_.bindKey(1, number);
        if (!statement_.step()) {
            return std::nullopt;
        }
        RowStore store(static_cast<int>(table_.columns.size()), false);
        store.append(statement_);
        std::vector<jet::Value> values;
        for (std::size_t i = 0; i < table_.columns.size(); ++i) {
            const jet::ColumnType type = table_.columns[i].type;
            values.push_back(jetValueOf(store.decode(store.cell(0, static_cast<int>(i)), fieldTypeOf(type)), type));
        }
        return values;
    }

private:
    static QByteArray select(const jet::TableDefinition &table)
    {
        QByteArray columns;
        for (const jet::ColumnDefinition &column : table.columns) {
            columns += (columns.isEmpty() ? "" : ", ") + (fieldTypeOf(column.type) ? quoteName(column.name) : QByteArray("NULL"));
        }
        return "SELECT " + columns + " FROM " + quoteName(table.name) + " WHERE rowid = ?1";
    }

    const jet::TableDefinition &table_;
    Statement statement_;
};

/// The mirrored columns in which two rows differ.
jet::Changes differences(const jet::TableDefinition &table, const std::vector<jet::Value> &before,
                         const std::vector<jet::Value> &after)
{
    jet::Changes changes;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const auto type = fieldTypeOf(table.columns[i].type);
        // Compared as the mirror has them, so that what it cannot hold exactly is not rewritten.
        if (type && valueOf(before[i]) != valueOf(after[i])) {
            changes.emplace_back(i, after[i]);
        }
    }
    return changes;
}

std::optional<jet::ColumnType> columnTypeOf(FieldType type)
{
    switch (type) {
    case FieldType::Boolean:
        return jet::ColumnType::Boolean;
    case FieldType::Integer:
        return jet::ColumnType::Integer;
    case FieldType::Long:
        return jet::ColumnType::Long;
    case FieldType::Single:
        return jet::ColumnType::Single;
    case FieldType::Double:
        return jet::ColumnType::Double;
    case FieldType::Date:
        return jet::ColumnType::Date;
    case FieldType::Text:
        return jet::ColumnType::Text;
    }
    return std::nullopt;
}

} // namespace

JetWriter::JetWriter(jet::Database &file, Connection &mirror) : file_(file), mirror_(mirror), transaction_(file), changes_(mirror)
{
}

std::int64_t JetWriter::rowNumber(jet::RowPosition position)
{
    return static_cast<std::int64_t>(position.page) * SlotsPerPage + position.slot;
}

bool JetWriter::hasKeyRows(const TableDef &table)
{
    const auto &fields = table.Fields();
    if (std::any_of(fields.begin(), fields.end(), [](const Field &field) { return field.autoIncrement; })) {
        return true;
    }
    return std::any_of(table.Indexes().begin(), table.Indexes().end(), [&table](const Index &index) {
        const Field *field = index.primary && index.fields.size() == 1 ? table.findField(index.fields.front()) : nullptr;
        return field != nullptr && field->type == FieldType::Long;
    });
}

void JetWriter::createTable(const TableDef &definition)
{
    jet::NewTable table{definition.Name(), {}, {}};
    for (const Field &field : definition.Fields()) {
        jet::NewColumn column{field.name, *columnTypeOf(field.type), 0, field.autoIncrement, {}};
        if (field.type == FieldType::Text) {
            column.characters = field.size;
            column.allowsZeroLength = field.allowZeroLength;
        }
        table.columns.push_back(std::move(column));
    }
    for (const Index &index : definition.Indexes()) {
        if (index.primary || index.unique) {
            table.indexes.push_back(
                {index.name, QStringList(index.fields.begin(), index.fields.end()), index.primary, index.unique});
        }
    }
    const auto automatic = std::find_if(table.columns.begin(), table.columns.end(),
                                        [](const jet::NewColumn &column) { return column.isAutoNumber; });
    const bool hasPrimary =
        std::any_of(table.indexes.begin(), table.indexes.end(), [](const jet::NewIndex &index) { return index.isPrimary; });
    if (automatic != table.columns.end() && !hasPrimary) {
        table.indexes.push_back({QStringLiteral("PrimaryKey"), {automatic->name}, true, true});
    }
    transaction_.createTable(table);
}

void JetWriter::addBooleanColumn(const QString &table, const QString &column)
{
    transaction_.addBooleanColumn(table, column);
}

std::vector<std::uint32_t> JetWriter::commit()
{
    const auto tables = changes_.tables();
    for (const auto &[name, rows] : tables) {
        writeTable(QString::fromStdString(name), rows);
    }
    return transaction_.commit();
}

void JetWriter::writeTable(const QString &name, const std::vector<MirrorChanges::Row> &rows)
{
    const jet::TableDefinition &table = file_.definition(name);
    const bool hasKeys = hasKeyRows(definitionOf(table));
    const bool numbersItself = std::any_of(table.columns.begin(), table.columns.end(),
                                           [](const jet::ColumnDefinition &column) { return column.isAutoNumber; });
    if (numbersItself && !hasKeys) {
        throw DataError(DataErrorNumber::ReadOnly,
                        QStringLiteral("The table %1 of %2 cannot be written: its autonumber is not its primary key.")
                            .arg(name, file_.path()));
    }
    MirrorRows mirror(mirror_, table);
    std::vector<MovedRow> moved;
    // Removed rows first, so that a key that moves from one row to another is free for it.
    for (const MirrorChanges::Row &row : rows) {
        if (row.existed && !mirror.read(row.number)) {
            transaction_.remove(table.name, positionOf(table, hasKeys, row.number));
        }
    }
    for (const MirrorChanges::Row &row : rows) {
        const auto values = mirror.read(row.number);
        if (!values) {
            continue;
        }
        if (!row.existed) {
            const jet::Inserted inserted = transaction_.insert(table.name, *values);
            if (!hasKeys && rowNumber(inserted.position) != row.number) {
                moved.push_back({row.number, rowNumber(inserted.position)});
            }
            continue;
        }
        const jet::RowPosition position = positionOf(table, hasKeys, row.number);
        const auto before = file_.readRow(table.name, position);
        const jet::Changes changes = before ? differences(table, *before, *values) : jet::Changes();
        if (!before || (!changes.empty() && !transaction_.update(table.name, position, changes))) {
            throw DataError(DataErrorNumber::RecordDeleted, QStringLiteral("Record is deleted."));
        }
    }
    renumber(name, moved);
}

jet::RowPosition JetWriter::positionOf(const jet::TableDefinition &table, bool hasKeys, std::int64_t row)
{
    if (!hasKeys) {
        return {static_cast<std::uint32_t>(row / SlotsPerPage), static_cast<std::uint8_t>(row % SlotsPerPage)};
    }
    const auto position = transaction_.findByKey(table.name, {static_cast<std::int32_t>(row)});
    if (!position) {
        throw DataError(DataErrorNumber::RecordDeleted, QStringLiteral("Record is deleted."));
    }
    return *position;
}

void JetWriter::renumber(const QString &table, const std::vector<MovedRow> &rows)
{
    if (rows.empty()) {
        return;
    }
    Statement statement(mirror_, "UPDATE " + quoteName(table) + " SET rowid = ?2 WHERE rowid = ?1");
    const auto renumberOne = [&statement](std::int64_t from, std::int64_t to) {
        statement.bindKey(1, from);
        statement.bindKey(2, to);
        statement.step();
        statement.reset();
    };
    // By way of negative numbers, since a new number may be the provisional one of another row.
    for (const MovedRow &row : rows) {
        renumberOne(row.from, -row.to);
    }
    for (const MovedRow &row : rows) {
        renumberOne(-row.to, row.to);
    }
}

} // namespace dao
