// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/TableWriter.h"

#include "platform/jet/CellCodec.h"
#include "platform/jet/ColumnSize.h"
#include "platform/jet/DataPageEditor.h"
#include "platform/jet/Error.h"
#include "platform/jet/IndexCheck.h"
#include "platform/jet/Pager.h"
#include "platform/jet/RowBytes.h"
#include "platform/jet/RowEditor.h"
#include "platform/jet/RowReader.h"
#include "platform/jet/TextCodec.h"
#include "platform/jet/UsageMapEditor.h"

#include <algorithm>
#include <limits>

namespace jet
{

namespace
{

constexpr qsizetype LongestRow = 4060;
constexpr qsizetype LongestCompressedMemo = 1024;
constexpr std::size_t RowCountOffset = 16;
constexpr std::size_t AutoNumberOffset = 20;
constexpr std::size_t CountsOffset = 63;
constexpr std::size_t CountSize = 12;

Bytes viewOf(const QByteArray &bytes)
{
    return {reinterpret_cast<const unsigned char *>(bytes.constData()), static_cast<std::size_t>(bytes.size())};
}

bool isLong(const ColumnDefinition &column)
{
    return column.type == ColumnType::Memo || column.type == ColumnType::Ole;
}

[[noreturn]] void refuse(const TableDefinition &table, const QString &reason)
{
    throw Error(ErrorNumber::ReadOnly, QStringLiteral("The table %1 can only be read: %2.").arg(table.name, reason));
}

void requireWritable(const TableDefinition &table, bool isCatalogue)
{
    for (const IndexDefinition &index : table.indexes) {
        if (const QString reason = unsupportedIndex(table, index, isCatalogue); !reason.isEmpty()) {
            refuse(table, reason);
        }
    }
    if (!table.relations.isEmpty()) {
        refuse(table, QStringLiteral("the file enforces the relation %1").arg(table.relations.first()));
    }
    for (const ColumnDefinition &column : table.columns) {
        if (column.number >= table.columnCount || (!column.isFixed && column.variableIndex >= table.variableCount)
            || (column.isFixed && column.fixedOffset + fixedBytes(column) > static_cast<std::size_t>(LongestRow))) {
            refuse(table, QStringLiteral("the definition of its column %1 is damaged").arg(column.name));
        }
    }
}

} // namespace

TableWriter::TableWriter(PageAllocator &allocator, TableDefinition &table, bool isCatalogue)
    : allocator_(allocator), table_(table),
      space_(allocator, table.page, table.ownedPages, table.freePages, [this] { return mayReuseSlots(); })
{
    requireWritable(table, isCatalogue);
    for (const IndexDefinition &index : table.indexes) {
        trees_.emplace_back(allocator, table.page, index.rootPage, index.ownedPages);
    }
}

/// Whether no entry of an index points at a deleted row; looked for once in each opening of the file.
bool TableWriter::mayReuseSlots()
{
    std::optional<bool> &known = allocator_.reusableSlots(table_.page);
    if (!known) {
        known = true;
        for (std::size_t i = 0; i < trees_.size() && *known; ++i) {
            trees_[i].flush();
            const IndexWalk walk =
                walkIndex(allocator_.pager(), table_, table_.indexes[i], [&](const QString &) { known = false; });
            known = *known && std::all_of(walk.entries.begin(), walk.entries.end(), [&](const std::string &entry) {
                return findRow(allocator_.pager(), table_.page, rowOf(entry)).has_value();
            });
        }
    }
    return *known;
}

Inserted TableWriter::insert(const std::vector<Value> &values)
{
    Inserted inserted;
    Changes changes;
    for (std::size_t i = 0; i < table_.columns.size(); ++i) {
        changes.emplace_back(i, i < values.size() ? values[i] : Value(Null{}));
    }
    const std::int32_t lastAutoNumber = nextAutoNumber(changes, inserted.autoNumber);
    RowEditor row(table_);
    std::vector<Value> newValues(table_.columns.size());
    const QByteArray bytes = change(row, changes, nullptr, newValues);
    inserted.position = space_.add(viewOf(bytes), SlotFlag::Plain);
    reindex(inserted.position, nullptr, &newValues);
    table_.lastAutoNumber = lastAutoNumber;
    ++table_.rowCount;
    return inserted;
}

/// Makes the changes in a row once all of them have proved possible; `values` are those of the indexes. Returns the row's bytes.
QByteArray TableWriter::change(RowEditor &row, const Changes &changes, const std::vector<Value> *oldValues,
                               std::vector<Value> &values)
{
    for (const auto &[number, value] : changes) {
        const ColumnDefinition &column = table_.columns.at(number);
        values[number] = column.type == ColumnType::Boolean && std::holds_alternative<Null>(value) ? Value(false) : value;
        if (!isLong(column)) {
            setCell(row, column, values[number]);
        }
    }
    requireKeys(values, oldValues);
    for (const auto &[number, value] : changes) {
        if (isLong(table_.columns[number])) {
            setLongCell(row, table_.columns[number], value);
        }
    }
    QByteArray bytes = row.bytes();
    if (bytes.size() > LongestRow) {
        throw Error(ErrorNumber::RowTooLong,
                    QStringLiteral("A row of %1 bytes is too long for the table %2.").arg(bytes.size()).arg(table_.name));
    }
    return bytes;
}

/// Fills the autonumber column in; returns what the table's last number will be.
std::int32_t TableWriter::nextAutoNumber(Changes &values, std::optional<std::int32_t> &given) const
{
    std::int32_t last = table_.lastAutoNumber;
    for (auto &[column, value] : values) {
        if (!table_.columns[column].isAutoNumber) {
            continue;
        }
        if (const auto *number = std::get_if<std::int32_t>(&value)) {
            last = std::max(last, *number);
        } else if (std::holds_alternative<Null>(value)) {
            if (last == std::numeric_limits<std::int32_t>::max()) {
                throw Error(ErrorNumber::ReadOnly,
                            QStringLiteral("The table %1 has no number left for a new row.").arg(table_.name));
            }
            value = ++last;
            given = last;
        }
    }
    return last;
}

/// Keys may not be null or taken. `oldValues` are those of the row itself.
void TableWriter::requireKeys(const std::vector<Value> &values, const std::vector<Value> *oldValues)
{
    for (std::size_t i = 0; i < trees_.size(); ++i) {
        const IndexDefinition &index = table_.indexes[i];
        const std::size_t nulls = nullsInKey(index, values);
        if (nulls > 0 && (index.isPrimary || index.isRequired)) {
            throw Error(ErrorNumber::NullKey,
                        QStringLiteral("A field of the index %1 of the table %2 cannot be null.").arg(index.name, table_.name));
        }
        if (!index.isUnique || nulls == index.columns.size()) {
            continue;
        }
        const std::optional<KeyBytes> key = indexKey(table_, index, values);
        if (key && (!oldValues || key != indexKey(table_, index, *oldValues)) && trees_[i].hasKey(*key)) {
            throw Error(ErrorNumber::DuplicateKey,
                        QStringLiteral("The table %1 has a row with the same key in the index %2.").arg(table_.name, index.name));
        }
    }
}

void TableWriter::setCell(RowEditor &row, const ColumnDefinition &column, const Value &value) const
{
    if (column.type == ColumnType::Boolean) {
        row.setFlag(column, valueAs<bool>(column, value));
    } else if (std::holds_alternative<Null>(value)) {
        row.setNull(column);
    } else {
        row.set(column, encodeCell(column, value));
    }
}

void TableWriter::setLongCell(RowEditor &row, const ColumnDefinition &column, const Value &value)
{
    if (std::holds_alternative<Null>(value)) {
        row.setNull(column);
    } else if (column.type == ColumnType::Memo) {
        const QString &text = valueAs<QString>(column, value);
        row.set(column, longValues(column).add(encodeText(text, column.isCompressed && text.size() <= LongestCompressedMemo)));
    } else {
        row.set(column, longValues(column).add(valueAs<QByteArray>(column, value)));
    }
}

LongValueWriter &TableWriter::longValues(const ColumnDefinition &column)
{
    const auto known = longValues_.find(column.number);
    if (known != longValues_.end()) {
        return known->second;
    }
    const auto pages = std::find_if(table_.longValues.begin(), table_.longValues.end(),
                                    [&](const LongValuePages &one) { return one.columnNumber == column.number; });
    if (pages == table_.longValues.end()) {
        refuse(table_, QStringLiteral("its column %1 has no pages for long values").arg(column.name));
    }
    return longValues_.try_emplace(column.number, allocator_, *pages).first->second;
}

/// A copy of what a row holds of a long value, empty where it holds none: freeing pieces moves what a view would show.
QByteArray TableWriter::longCell(Bytes row, const ColumnDefinition &column)
{
    const RowBytes bytes(row);
    if (!isLong(column) || !bytes.bit(column.number)) {
        return {};
    }
    const Bytes cell = bytes.variable(column.variableIndex);
    return {reinterpret_cast<const char *>(cell.data()), static_cast<qsizetype>(cell.size())};
}

void TableWriter::removeLongValue(const ColumnDefinition &column, const QByteArray &cell)
{
    if (!cell.isEmpty()) {
        longValues(column).remove(viewOf(cell));
    }
}

std::vector<Value> TableWriter::indexedValues(Bytes row) const
{
    std::vector<Value> values(table_.columns.size());
    RowDecoder decoder(allocator_.pager(), table_);
    const RowBytes bytes(row);
    for (const IndexDefinition &index : table_.indexes) {
        for (const IndexColumn &part : index.columns) {
            decoder.decodeColumn(bytes, table_.columns[part.column], values[part.column]);
        }
    }
    return values;
}

void TableWriter::reindex(RowPosition position, const std::vector<Value> *oldValues, const std::vector<Value> *newValues)
{
    for (std::size_t i = 0; i < trees_.size(); ++i) {
        IndexDefinition &index = table_.indexes[i];
        const std::optional<KeyBytes> oldKey = oldValues ? indexKey(table_, index, *oldValues) : std::nullopt;
        const std::optional<KeyBytes> newKey = newValues ? indexKey(table_, index, *newValues) : std::nullopt;
        if (oldKey == newKey) {
            continue;
        }
        if (oldKey && trees_[i].remove(*oldKey, position) && index.distinctKeys > 0) {
            --index.distinctKeys;
        }
        if (newKey && trees_[i].insert(*newKey, position)) {
            ++index.distinctKeys;
        }
    }
}

std::optional<TableWriter::Location> TableWriter::locate(RowPosition position) const
{
    const std::optional<Bytes> bytes = findRow(allocator_.pager(), table_.page, position);
    if (!bytes) {
        return std::nullopt;
    }
    Location location{position, std::nullopt, *bytes};
    const DataPage page(allocator_.pager().page(position.page, PageType::Data));
    if (page.isPointer(position.slot)) {
        const std::uint32_t pointer = page.bytes(position.slot).longAt(0);
        location.movedTo = RowPosition{pointer >> 8, static_cast<std::uint8_t>(pointer)};
        if (DataPage(allocator_.pager().page(location.movedTo->page)).isPointer(location.movedTo->slot)) {
            throw Fault(QStringLiteral("the row has moved more than once"));
        }
    }
    return location;
}

bool TableWriter::update(RowPosition position, const Changes &changes)
{
    const std::optional<Location> location = locate(position);
    if (!location) {
        return false;
    }
    const std::vector<Value> oldValues = indexedValues(location->bytes);
    std::vector<Value> newValues = oldValues;
    RowEditor row(table_, location->bytes);
    std::vector<QByteArray> oldCells;
    for (const auto &[column, value] : changes) {
        oldCells.push_back(longCell(location->bytes, table_.columns.at(column)));
    }
    const QByteArray bytes = change(row, changes, &oldValues, newValues);
    for (std::size_t i = 0; i < changes.size(); ++i) {
        removeLongValue(table_.columns[changes[i].first], oldCells[i]);
    }
    move(*location, bytes);
    reindex(position, &oldValues, &newValues);
    return true;
}

/// Puts the changed row where it was; on another page if that one is too full, leaving a pointer.
void TableWriter::move(const Location &from, const QByteArray &row)
{
    if (from.movedTo ? space_.set(*from.movedTo, viewOf(row), SlotFlag::Moved)
                     : space_.set(from.position, viewOf(row), SlotFlag::Plain)) {
        return;
    }
    const RowPosition movedTo = space_.add(viewOf(row), SlotFlag::Moved);
    QByteArray pointer(4, '\0');
    qToLittleEndian(movedTo.page << 8 | movedTo.slot, pointer.data());
    if (from.movedTo) {
        space_.remove(*from.movedTo);
    }
    if (!space_.set(from.position, viewOf(pointer), SlotFlag::Pointer)) {
        throw Fault(QStringLiteral("page %1 is too full for a pointer").arg(from.position.page));
    }
}

bool TableWriter::remove(RowPosition position)
{
    const std::optional<Location> location = locate(position);
    if (!location) {
        return false;
    }
    const std::vector<Value> values = indexedValues(location->bytes);
    for (const ColumnDefinition &column : table_.columns) {
        removeLongValue(column, longCell(location->bytes, column));
    }
    reindex(position, &values, nullptr);
    if (location->movedTo) {
        space_.remove(*location->movedTo);
    }
    space_.remove(position);
    --table_.rowCount;
    return true;
}

std::optional<RowPosition> TableWriter::findByKey(const std::vector<Value> &key)
{
    const IndexDefinition *primary = table_.primaryKey();
    if (!primary || key.size() != primary->columns.size()) {
        throw Error(ErrorNumber::ItemNotFound,
                    QStringLiteral("The table %1 has no primary key of %2 columns.").arg(table_.name).arg(key.size()));
    }
    std::vector<Value> values(table_.columns.size());
    for (std::size_t i = 0; i < key.size(); ++i) {
        values[primary->columns[i].column] = key[i];
    }
    const std::optional<KeyBytes> bytes = indexKey(table_, *primary, values);
    return bytes ? trees_[static_cast<std::size_t>(primary - table_.indexes.data())].find(*bytes) : std::nullopt;
}

void TableWriter::flush()
{
    for (IndexTree &tree : trees_) {
        tree.flush();
    }
    allocator_.pager().page(table_.page, PageType::Definition);
    unsigned char *const bytes = allocator_.pager().edit(table_.page);
    qToLittleEndian(table_.rowCount, bytes + RowCountOffset);
    qToLittleEndian(table_.lastAutoNumber, bytes + AutoNumberOffset);
    for (std::size_t i = 0; i < table_.indexes.size(); ++i) {
        const std::size_t offset = CountsOffset + CountSize * i + 4;
        if (offset + 4 <= PageSize) {
            qToLittleEndian(table_.indexes[i].distinctKeys, bytes + offset);
        }
    }
}

} // namespace jet
