// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/DefinitionWriter.h"

#include "platform/jet/ColumnSize.h"
#include "platform/jet/DataPageEditor.h"
#include "platform/jet/DefinitionLayout.h"
#include "platform/jet/Pager.h"
#include "platform/jet/UsageMapEditor.h"

#include <algorithm>

namespace jet
{

namespace
{

using namespace DefinitionLayout;

/// At the beginning of each part of a definition, and of each tree.
constexpr std::uint32_t PartMark = 0x0659;
constexpr std::uint32_t TreeMark = 0x0783;
constexpr std::uint32_t GeneralSortOrder = 0x0409;
constexpr std::uint32_t NoRelation = 0xFFFFFFFF;
/// Changes of the other table that a relation would pass on.
constexpr std::uint8_t Cascades = 4;

/// Bytes that are put one after the other.
class Output
{
public:
    template <typename Number> Output &put(Number number)
    {
        const auto at = bytes.size();
        bytes.resize(at + static_cast<qsizetype>(sizeof number));
        qToLittleEndian(number, bytes.data() + at);
        return *this;
    }
    Output &zeros(qsizetype count)
    {
        bytes.append(count, '\0');
        return *this;
    }
    Output &name(const QString &text)
    {
        put(static_cast<std::uint16_t>(2 * text.size()));
        for (const QChar character : text) {
            put(character.unicode());
        }
        return *this;
    }
    Output &pointer(RowPosition position) { return put(position.page << 8 | position.slot); }

    QByteArray bytes;
};

QByteArray columnBytes(const ColumnDefinition &column, bool isSystem)
{
    Output out;
    out.put(static_cast<std::uint8_t>(column.type)).put(PartMark).put(column.number).put(column.variableIndex);
    out.put(isSystem ? std::uint16_t{0} : column.number);
    if (column.type == ColumnType::Numeric) {
        out.put(column.precision).put(column.scale).zeros(2);
    } else {
        out.put(GeneralSortOrder);
    }
    out.put(column.flags).put(std::uint8_t{column.isCompressed}).zeros(4);
    return out.put(column.fixedOffset).put(column.length).bytes;
}

QByteArray treeBytes(const TableDefinition &table, const IndexDefinition &index)
{
    Output out;
    out.put(TreeMark);
    for (std::size_t i = 0; i < ColumnsPerTree; ++i) {
        const bool isUsed = i < index.columns.size();
        out.put(isUsed ? table.columns[index.columns[i].column].number : NoColumn);
        out.put(std::uint8_t{isUsed && index.columns[i].isAscending});
    }
    out.pointer(index.ownedPages).put(index.rootPage).zeros(4);
    const auto flag = [](bool isSet, std::uint8_t bit) { return isSet ? bit : std::uint8_t{0}; };
    out.put(static_cast<std::uint8_t>(IndexFlag::Always | flag(index.isUnique, IndexFlag::Unique)
                                      | flag(index.ignoresNulls, IndexFlag::IgnoresNulls)
                                      | flag(index.isRequired, IndexFlag::Required)));
    return out.zeros(5).bytes;
}

QByteArray treeNameBytes(const IndexDefinition &index)
{
    Output out;
    out.put(PartMark).put(index.number).put(index.number).zeros(1).put(NoRelation).zeros(4);
    out.put(Cascades).put(Cascades).put(std::uint8_t{index.isPrimary ? PrimaryName : std::uint8_t{0}});
    return out.zeros(4).bytes;
}

void setLength(QByteArray &definition)
{
    qToLittleEndian(static_cast<std::uint32_t>(definition.size()), definition.data() + LengthOffset);
}

void addTo(QByteArray &definition, std::size_t offset, std::uint16_t more)
{
    qToLittleEndian(static_cast<std::uint16_t>(qFromLittleEndian<std::uint16_t>(definition.constData() + offset) + more),
                    definition.data() + offset);
}

} // namespace

void layOutColumns(TableDefinition &table)
{
    std::size_t fixedEnd = 0;
    std::uint16_t number = 0;
    table.variableCount = 0;
    for (ColumnDefinition &column : table.columns) {
        column.number = number++;
        column.variableIndex = table.variableCount;
        column.isFixed = (column.flags & ColumnFlag::Fixed) != 0;
        if (!column.isFixed) {
            ++table.variableCount;
        } else if (column.type != ColumnType::Boolean) {
            column.fixedOffset = static_cast<std::uint16_t>(fixedEnd);
            fixedEnd += fixedBytes(column);
        }
    }
    table.columnCount = number;
}

QByteArray encodeDefinition(const TableDefinition &table)
{
    Output out;
    out.put(PageType::Definition).put(std::uint8_t{1}).zeros(10).put(PartMark).zeros(8).put(std::uint8_t{1}).zeros(15);
    out.put(table.isSystem ? SystemTable : UserTable).put(table.columnCount).put(table.variableCount);
    out.put(static_cast<std::uint16_t>(table.columns.size()));
    out.put(static_cast<std::uint32_t>(table.indexes.size())).put(static_cast<std::uint32_t>(table.indexes.size()));
    out.pointer(table.ownedPages).pointer(table.freePages);
    out.zeros(static_cast<qsizetype>(CountSize * table.indexes.size()));
    for (const ColumnDefinition &column : table.columns) {
        out.bytes += columnBytes(column, table.isSystem);
    }
    for (const ColumnDefinition &column : table.columns) {
        out.name(column.name);
    }
    for (const IndexDefinition &index : table.indexes) {
        out.bytes += treeBytes(table, index);
    }
    for (const IndexDefinition &index : table.indexes) {
        out.bytes += treeNameBytes(index);
    }
    for (const IndexDefinition &index : table.indexes) {
        out.name(index.name);
    }
    for (const LongValuePages &pages : table.longValues) {
        out.put(pages.columnNumber).pointer(pages.ownedPages).pointer(pages.freePages);
    }
    out.put(NoColumn);
    setLength(out.bytes);
    return out.bytes;
}

void writeDefinition(PageAllocator &allocator, std::uint32_t firstPage, const QByteArray &bytes)
{
    Pager &pager = allocator.pager();
    std::uint32_t page = firstPage;
    for (qsizetype begin = 0; begin < bytes.size();) {
        const qsizetype header = begin == 0 ? 0 : static_cast<qsizetype>(PageHeader);
        const QByteArray part = bytes.mid(begin, static_cast<qsizetype>(PageSize) - header);
        begin += part.size();
        const bool isKnown = pager.page(page).byteAt(0) == PageType::Definition;
        std::uint32_t next = isKnown ? pager.page(page).longAt(NextPageOffset) : 0;
        if (next == 0 && begin < bytes.size()) {
            next = allocator.allocate();
        }
        unsigned char *const out = pager.edit(page);
        std::fill_n(out, PageSize, std::uint8_t{0});
        std::copy(part.begin(), part.end(), out + header);
        out[0] = PageType::Definition;
        out[1] = 1;
        const qsizetype unused = static_cast<qsizetype>(PageSize) - header - part.size() - static_cast<qsizetype>(PageHeader);
        qToLittleEndian(static_cast<std::uint16_t>(std::max(unused, qsizetype{0})), out + FreeBytesOffset);
        qToLittleEndian(begin < bytes.size() ? next : 0, out + NextPageOffset);
        page = next;
    }
}

QByteArray withBooleanColumn(const QByteArray &bytes, const TableDefinition &table, const QString &name)
{
    const Bytes whole(reinterpret_cast<const unsigned char *>(bytes.constData()), static_cast<std::size_t>(bytes.size()));
    const Bytes known = whole.part(0, whole.longAt(LengthOffset));
    ColumnDefinition column;
    column.type = ColumnType::Boolean;
    column.number = table.columnCount;
    column.variableIndex = table.variableCount;
    column.flags = ColumnFlag::Fixed | ColumnFlag::Nullable;
    column.length = 1;
    const std::size_t columnsEnd = CountsOffset + CountSize * table.indexes.size() + ColumnSize * table.columns.size();
    std::size_t namesEnd = columnsEnd;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        namesEnd += 2 + known.shortAt(namesEnd);
    }
    known.from(namesEnd);
    QByteArray definition = bytes.left(static_cast<qsizetype>(known.size()));
    definition.insert(static_cast<qsizetype>(namesEnd), Output().name(name).bytes);
    definition.insert(static_cast<qsizetype>(columnsEnd), columnBytes(column, false));
    addTo(definition, ColumnCountOffset, 1);
    addTo(definition, ColumnsOffset, 1);
    setLength(definition);
    return definition;
}

std::uint32_t makeMaps(PageAllocator &allocator, const std::vector<std::uint32_t> &pages)
{
    const std::uint32_t number = allocator.allocate();
    DataPageEditor::format(allocator.pager(), number, 0);
    DataPageEditor editor(allocator.pager(), number, 0);
    for (const std::uint32_t page : pages) {
        std::array<unsigned char, MapRowSize> row{};
        if (page != 0) {
            qToLittleEndian(page, row.data() + 1);
            row[5] = 1;
        }
        if (!editor.canAdd(row.size())) {
            throw Fault(QStringLiteral("the table has too many indexes"));
        }
        editor.add({row.data(), row.size()}, SlotFlag::Plain);
    }
    return number;
}

} // namespace jet
