// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/RowReader.h"

#include "platform/jet/ColumnSize.h"
#include "platform/jet/LongValue.h"
#include "platform/jet/RowBytes.h"
#include "platform/jet/TextCodec.h"
#include "platform/jet/UsageMap.h"

#include <bit>

namespace jet
{

namespace
{

/// Moves of one row that is followed from pointer to pointer.
constexpr int MostMoves = 16;

DataPage rowPage(const Pager &pager, std::uint32_t number, std::uint32_t owner)
{
    const DataPage page(pager.page(number, PageType::Data));
    if (page.owner() != owner) {
        throw Fault(
            QStringLiteral("page %1 belongs to the definition on page %2 and not %3").arg(number).arg(page.owner()).arg(owner));
    }
    return page;
}

QString &textIn(Value &value)
{
    QString *text = std::get_if<QString>(&value);
    return text ? *text : value.emplace<QString>();
}

QByteArray copyOf(Bytes bytes)
{
    return {reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

Bytes viewOf(const QByteArray &bytes)
{
    return {reinterpret_cast<const unsigned char *>(bytes.constData()), static_cast<std::size_t>(bytes.size())};
}

} // namespace

std::optional<Bytes> findRow(const Pager &pager, std::uint32_t owner, RowPosition position)
{
    DataPage page = rowPage(pager, position.page, owner);
    std::uint32_t slot = position.slot;
    if (slot >= page.slotCount() || page.isSkipped(slot)) {
        return std::nullopt;
    }
    for (int moves = 0; page.isPointer(slot); ++moves) {
        if (moves == MostMoves) {
            throw Fault(QStringLiteral("the pointers to where the row has moved run in a circle"));
        }
        const std::uint32_t pointer = page.bytes(slot).longAt(0);
        page = rowPage(pager, pointer >> 8, owner);
        slot = pointer & 0xFF;
        if (slot >= page.slotCount()) {
            throw Fault(
                QStringLiteral("the row has moved to row %1 of page %2, which does not exist").arg(slot + 1).arg(pointer >> 8));
        }
        if (page.isDeleted(slot)) {
            return std::nullopt;
        }
    }
    return page.bytes(slot);
}

std::uint32_t RowPages::rowsOn(const std::vector<std::uint32_t> &pages, std::uint32_t owner) const
{
    std::uint32_t rows = 0;
    forEachRow(pager_, owner, pages, [&](RowPosition, Bytes) { ++rows; });
    return rows;
}

std::vector<std::uint32_t> RowPages::of(const TableDefinition &table)
{
    std::optional<Fault> mapFault;
    try {
        std::vector<std::uint32_t> pages = pagesInMap(pager_, table.ownedPages);
        if (rowsOn(pages, table.page) == table.rowCount) {
            return pages;
        }
    } catch (const Fault &fault) {
        mapFault = fault;
    }
    if (!byOwner_) {
        byOwner_.emplace();
        for (std::uint32_t number = 1; number < pager_.pageCount(); ++number) {
            const Bytes page = pager_.page(number);
            if (page.byteAt(0) == PageType::Data) {
                (*byOwner_)[DataPage(page).owner()].push_back(number);
            }
        }
    }
    std::vector<std::uint32_t> pages = byOwner_->value(table.page);
    const std::uint32_t rows = rowsOn(pages, table.page);
    if (rows == table.rowCount) {
        return pages;
    }
    if (mapFault) {
        throw *mapFault;
    }
    throw Fault(QStringLiteral("%1 rows can be read, but its definition counts %2").arg(rows).arg(table.rowCount));
}

RowDecoder::RowDecoder(const Pager &pager, const TableDefinition &table)
    : pager_(pager), table_(table), longValueBudget_(pager.pageCount() * PageSize)
{
}

void RowDecoder::decode(Bytes row, std::vector<Value> &values)
{
    const RowBytes bytes(row);
    values.resize(table_.columns.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        decodeColumn(bytes, table_.columns[i], values[i]);
    }
}

void RowDecoder::decodeColumn(const RowBytes &row, const ColumnDefinition &column, Value &value)
{
    const bool bit = row.bit(column.number);
    if (column.type == ColumnType::Boolean) {
        value = bit;
        return;
    }
    if (!bit) {
        value = Null{};
        return;
    }
    const Bytes cell = column.isFixed ? row.fixed(column.fixedOffset, fixedBytes(column)) : row.variable(column.variableIndex);
    switch (column.type) {
    case ColumnType::Byte:
        value = std::int32_t{cell.byteAt(0)};
        break;
    case ColumnType::Integer:
        value = std::int32_t{static_cast<std::int16_t>(cell.shortAt(0))};
        break;
    case ColumnType::Long:
        value = static_cast<std::int32_t>(cell.longAt(0));
        break;
    case ColumnType::Currency:
        value = Currency{static_cast<std::int64_t>(cell.eightAt(0))};
        break;
    case ColumnType::Single:
        value = std::bit_cast<float>(cell.longAt(0));
        break;
    case ColumnType::Double:
        value = std::bit_cast<double>(cell.eightAt(0));
        break;
    case ColumnType::Date:
        value = Date{std::bit_cast<double>(cell.eightAt(0))};
        break;
    case ColumnType::Text:
        decodeText(cell, textIn(value));
        break;
    case ColumnType::Memo:
        decodeText(viewOf(readLongValue(pager_, cell, longValueBudget_)), textIn(value));
        break;
    case ColumnType::Ole:
        value = readLongValue(pager_, cell, longValueBudget_);
        break;
    default:
        value = copyOf(cell);
        break;
    }
}

} // namespace jet
