// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/TableMaker.h"

#include "platform/basic/Clock.h"
#include "platform/basic/SerialDate.h"
#include "platform/jet/ColumnSize.h"
#include "platform/jet/DatabaseState.h"
#include "platform/jet/DefinitionLayout.h"
#include "platform/jet/DefinitionWriter.h"
#include "platform/jet/IndexTree.h"
#include "platform/jet/NewTable.h"
#include "platform/jet/Properties.h"
#include "platform/jet/SystemTable.h"

#include <algorithm>

namespace jet
{

namespace
{

constexpr std::int32_t EveryRight = 0xFFFFF;
constexpr std::size_t MostColumns = 255;
constexpr int LongestName = 64;
constexpr std::size_t ColumnsPerIndex = 10;

[[noreturn]] void failOfDefinition(const NewTable &table, const QString &reason)
{
    throw Error(ErrorNumber::ReadOnly, QStringLiteral("The table %1 cannot be made: %2.").arg(table.name, reason));
}

ColumnDefinition columnOf(const NewTable &table, const NewColumn &made)
{
    ColumnDefinition column;
    column.name = made.name;
    column.type = made.type;
    column.flags = ColumnFlag::Nullable;
    switch (made.type) {
    case ColumnType::Text:
        if (made.characters < 1 || made.characters > 255) {
            failOfDefinition(table, QStringLiteral("the field %1 has a length of %2").arg(made.name).arg(made.characters));
        }
        column.length = static_cast<std::uint16_t>(2 * made.characters);
        column.isCompressed = true;
        break;
    case ColumnType::Memo:
        column.isCompressed = true;
        break;
    case ColumnType::Ole:
        break;
    case ColumnType::Boolean:
    case ColumnType::Byte:
    case ColumnType::Integer:
    case ColumnType::Long:
    case ColumnType::Currency:
    case ColumnType::Single:
    case ColumnType::Double:
    case ColumnType::Date:
        column.flags |= ColumnFlag::Fixed;
        column.length = static_cast<std::uint16_t>(std::max(fixedBytes(column), std::size_t{1}));
        break;
    default:
        failOfDefinition(table, QStringLiteral("the field %1 is of a type that cannot be made").arg(made.name));
    }
    if (made.isAutoNumber) {
        if (made.type != ColumnType::Long) {
            failOfDefinition(table, QStringLiteral("the field %1 is an autonumber, but no Long").arg(made.name));
        }
        column.flags |= ColumnFlag::AutoNumber;
    }
    return column;
}

IndexDefinition indexOf(const NewTable &table, const TableDefinition &definition, const NewIndex &made)
{
    IndexDefinition index;
    index.name = made.name;
    index.isPrimary = made.isPrimary;
    index.isUnique = made.isUnique || made.isPrimary;
    index.isRequired = made.isPrimary;
    for (const QString &name : made.columns) {
        const ColumnDefinition *column = definition.findColumn(name);
        if (!column) {
            failOfDefinition(table, QStringLiteral("the index %1 is on the field %2, which it lacks").arg(made.name, name));
        }
        index.columns.push_back({static_cast<std::size_t>(column - definition.columns.data()), true});
    }
    if (index.columns.empty() || index.columns.size() > ColumnsPerIndex) {
        failOfDefinition(table, QStringLiteral("the index %1 has %2 fields").arg(made.name).arg(index.columns.size()));
    }
    if (const QString reason = unsupportedIndex(definition, index, false); !reason.isEmpty()) {
        failOfDefinition(table, reason);
    }
    return index;
}

TableDefinition definitionOf(const NewTable &table)
{
    TableDefinition definition;
    definition.name = table.name;
    if (table.columns.empty() || table.columns.size() > MostColumns) {
        failOfDefinition(table, QStringLiteral("it has %1 fields").arg(table.columns.size()));
    }
    for (const NewColumn &column : table.columns) {
        if (column.name.isEmpty() || column.name.size() > LongestName || definition.findColumn(column.name)) {
            failOfDefinition(table,
                             QStringLiteral("the name of the field \"%1\" is empty, too long or there twice").arg(column.name));
        }
        definition.columns.push_back(columnOf(table, column));
    }
    layOutColumns(definition);
    for (const NewIndex &index : table.indexes) {
        definition.indexes.push_back(indexOf(table, definition, index));
    }
    return definition;
}

QByteArray propertiesOf(const NewTable &table)
{
    std::vector<std::pair<QString, bool>> allowed;
    for (const NewColumn &column : table.columns) {
        if (column.allowsZeroLength) {
            allowed.emplace_back(column.name, *column.allowsZeroLength);
        }
    }
    return allowed.empty() ? QByteArray() : allowZeroLengthBlob(allowed);
}

} // namespace

void makePages(PageAllocator &allocator, TableDefinition &table)
{
    // Two maps of the table, then one of each index, then two of each column of long values.
    std::vector<std::uint32_t> mapped{0, 0};
    for (IndexDefinition &index : table.indexes) {
        index.number = static_cast<std::uint32_t>(&index - table.indexes.data());
        index.rootPage = allocator.allocate();
        IndexTree::format(allocator, index.rootPage, table.page);
        mapped.push_back(index.rootPage);
    }
    for (const ColumnDefinition &column : table.columns) {
        if (column.type == ColumnType::Memo || column.type == ColumnType::Ole) {
            table.longValues.push_back({column.number, {}, {}});
            mapped.insert(mapped.end(), {0, 0});
        }
    }
    const std::uint32_t maps = makeMaps(allocator, mapped);
    std::uint8_t slot = 0;
    table.ownedPages = {maps, slot++};
    table.freePages = {maps, slot++};
    for (IndexDefinition &index : table.indexes) {
        index.ownedPages = {maps, slot++};
    }
    for (LongValuePages &pages : table.longValues) {
        pages.ownedPages = {maps, slot++};
        pages.freePages = {maps, slot++};
    }
    writeDefinition(allocator, table.page, encodeDefinition(table));
}

void createTable(DatabaseState &state, const NewTable &table)
{
    if (state.catalogue.find(table.name)) {
        throw Error(ErrorNumber::TableExists, QStringLiteral("There is a table %1 already.").arg(table.name));
    }
    if (table.name.isEmpty() || table.name.size() > LongestName || !hasKnownOrder(table.name)) {
        failOfDefinition(table, QStringLiteral("its name is not made of letters A to Z, digits, blanks and underscores"));
    }
    TableDefinition definition = definitionOf(table);
    SystemTable objects(state.allocator, QStringLiteral("MSysObjects"), CataloguePage);
    SystemTable rights(state.allocator, QStringLiteral("MSysACEs"), RightsPage);
    definition.page = state.allocator.allocate();
    makePages(state.allocator, definition);

    const auto id = static_cast<std::int32_t>(definition.page);
    const QDateTime now = basic::Clock::now();
    const Date made{basic::SerialDate::fromDateTime(now.date(), now.time()).days()};
    std::vector<std::pair<QString, Value>> row{{QStringLiteral("Id"), id},
                                               {QStringLiteral("ParentId"), static_cast<std::int32_t>(CatalogueId::Tables)},
                                               {QStringLiteral("Name"), table.name},
                                               {QStringLiteral("Type"), std::int32_t{1}},
                                               {QStringLiteral("DateCreate"), made},
                                               {QStringLiteral("DateUpdate"), made},
                                               {QStringLiteral("Flags"), std::int32_t{0}}};
    objects.forEach([&](const SystemTable::Cells &cells) {
        if (cells.value(QStringLiteral("Id")) == Value(static_cast<std::int32_t>(CatalogueId::Database))) {
            row.emplace_back(QStringLiteral("Owner"), cells.value(QStringLiteral("Owner")));
        }
    });
    if (const QByteArray properties = propertiesOf(table); !properties.isEmpty()) {
        row.emplace_back(QStringLiteral("LvProp"), properties);
    }
    objects.insert(row);
    objects.flush();

    // Holders of inheritable rights on tables have every right on the new one.
    std::vector<Value> holders;
    rights.forEach([&](const SystemTable::Cells &cells) {
        if (cells.value(QStringLiteral("ObjectId")) == Value(static_cast<std::int32_t>(CatalogueId::Tables))
            && cells.value(QStringLiteral("FInheritable")) == Value(true)) {
            holders.push_back(cells.value(QStringLiteral("SID")));
        }
    });
    for (const Value &holder : holders) {
        rights.insert({{QStringLiteral("ObjectId"), id},
                       {QStringLiteral("SID"), holder},
                       {QStringLiteral("ACM"), EveryRight},
                       {QStringLiteral("FInheritable"), false}});
    }
    rights.flush();
}

void addBooleanColumn(DatabaseState &state, const QString &table, const QString &column)
{
    const TableDefinition &definition = state.definition(table);
    if (definition.findColumn(column)) {
        throw Error(ErrorNumber::FieldExists,
                    QStringLiteral("The table %1 has a field %2 already.").arg(definition.name, column));
    }
    if (column.isEmpty() || column.size() > LongestName || definition.columnCount >= MostColumns) {
        throw Error(ErrorNumber::ReadOnly,
                    QStringLiteral("The field %1 cannot be added to the table %2.").arg(column, definition.name));
    }
    const QByteArray bytes = definitionBytes(state.pager, definition.page);
    writeDefinition(state.allocator, definition.page, withBooleanColumn(bytes, definition, column));
}

} // namespace jet
