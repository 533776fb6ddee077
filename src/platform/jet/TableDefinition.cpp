// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/TableDefinition.h"

#include "platform/jet/DefinitionLayout.h"
#include "platform/jet/Pager.h"
#include "platform/jet/TextCodec.h"

#include <algorithm>

namespace jet
{

namespace
{

using namespace DefinitionLayout;

/// At least the format's own limits; a damaged count must not make a table of millions.
constexpr std::uint32_t MostColumns = 255;
constexpr std::uint32_t MostIndexes = 1000;
constexpr std::uint32_t MostPages = 100;

/// Length in two bytes, then text; moves `at` behind it.
QString readName(Bytes bytes, std::size_t &at)
{
    const std::size_t length = bytes.shortAt(at);
    QString name = decodeText(bytes.part(at + 2, length));
    at += 2 + length;
    return name;
}

RowPosition positionAt(Bytes bytes, std::size_t offset)
{
    const std::uint32_t pointer = bytes.longAt(offset);
    return {pointer >> 8, static_cast<std::uint8_t>(pointer)};
}

ColumnDefinition readColumn(Bytes bytes)
{
    constexpr std::uint8_t Compressed = 0x01;
    ColumnDefinition column;
    column.type = static_cast<ColumnType>(bytes.byteAt(0));
    column.number = bytes.shortAt(5);
    column.variableIndex = bytes.shortAt(7);
    if (column.type == ColumnType::Numeric) {
        column.precision = bytes.byteAt(11);
        column.scale = bytes.byteAt(12);
    } else {
        column.sortOrder = bytes.longAt(11);
    }
    column.flags = bytes.byteAt(15);
    column.isFixed = (column.flags & ColumnFlag::Fixed) != 0;
    column.isAutoNumber = (column.flags & ColumnFlag::AutoNumber) != 0;
    column.isCompressed = (bytes.byteAt(16) & Compressed) != 0;
    column.fixedOffset = bytes.shortAt(21);
    column.length = bytes.shortAt(23);
    return column;
}

std::vector<ColumnDefinition> readColumns(Bytes bytes, std::size_t &at)
{
    const std::size_t count = bytes.shortAt(ColumnsOffset);
    if (count > MostColumns) {
        throw Fault(QStringLiteral("the definition counts %1 columns").arg(count));
    }
    std::vector<ColumnDefinition> columns;
    for (std::size_t i = 0; i < count; ++i, at += ColumnSize) {
        columns.push_back(readColumn(bytes.part(at, ColumnSize)));
    }
    for (ColumnDefinition &column : columns) {
        column.name = readName(bytes, at);
    }
    // The file's own order may be that of the names.
    std::stable_sort(columns.begin(), columns.end(), [](const auto &a, const auto &b) { return a.number < b.number; });
    return columns;
}

IndexDefinition readTree(Bytes bytes, const std::vector<ColumnDefinition> &columns)
{
    IndexDefinition index;
    for (std::size_t i = 0; i < ColumnsPerTree; ++i) {
        const std::uint16_t number = bytes.shortAt(4 + 3 * i);
        if (number == NoColumn) {
            continue;
        }
        const auto column = std::find_if(columns.begin(), columns.end(), [&](const auto &one) { return one.number == number; });
        if (column == columns.end()) {
            throw Fault(QStringLiteral("an index is on the column %1, which the table lacks").arg(number));
        }
        index.columns.push_back({static_cast<std::size_t>(column - columns.begin()), bytes.byteAt(6 + 3 * i) == 1});
    }
    index.ownedPages = positionAt(bytes, 34);
    index.rootPage = bytes.longAt(38);
    const std::uint8_t flags = bytes.byteAt(46);
    index.isUnique = (flags & IndexFlag::Unique) != 0;
    index.ignoresNulls = (flags & IndexFlag::IgnoresNulls) != 0;
    index.isRequired = (flags & IndexFlag::Required) != 0;
    return index;
}

/// What the names add to the trees; the name of an index goes before that of a relation. Returns where the names end.
std::size_t nameTrees(Bytes bytes, std::size_t at, std::uint32_t nameCount, TableDefinition &table)
{
    std::size_t nameAt = at + IndexNameSize * nameCount;
    for (std::uint32_t i = 0; i < nameCount; ++i, at += IndexNameSize) {
        const std::uint32_t number = bytes.longAt(at + 8);
        const std::uint8_t kind = bytes.byteAt(at + 23);
        const QString name = readName(bytes, nameAt);
        if (number >= table.indexes.size()) {
            throw Fault(QStringLiteral("the index %1 has no tree").arg(name));
        }
        IndexDefinition &index = table.indexes[number];
        if (kind == RelationName) {
            table.relations.append(name);
        }
        if (index.name.isEmpty() || index.isRelation) {
            index.name = name;
            index.isRelation = kind == RelationName;
        }
        index.isPrimary = index.isPrimary || kind == PrimaryName;
    }
    return nameAt;
}

std::vector<LongValuePages> readLongValuePages(Bytes bytes, std::size_t at)
{
    std::vector<LongValuePages> pages;
    for (; bytes.shortAt(at) != NoColumn; at += 10) {
        pages.push_back({bytes.shortAt(at), positionAt(bytes, at + 2), positionAt(bytes, at + 6)});
    }
    return pages;
}

/// Moves `at` behind the indexes.
void readIndexes(Bytes bytes, std::size_t &at, TableDefinition &table)
{
    const std::uint32_t count = bytes.longAt(IndexesOffset);
    const std::uint32_t nameCount = bytes.longAt(IndexNamesOffset);
    if (count > MostIndexes || nameCount > MostIndexes) {
        throw Fault(QStringLiteral("the definition counts %1 indexes").arg(std::max(count, nameCount)));
    }
    for (std::uint32_t i = 0; i < count; ++i, at += TreeSize) {
        table.indexes.push_back(readTree(bytes.part(at, TreeSize), table.columns));
        table.indexes.back().number = i;
        table.indexes.back().distinctKeys = bytes.longAt(CountsOffset + CountSize * i + 4);
    }
    at = nameTrees(bytes, at, nameCount, table);
}

} // namespace

const ColumnDefinition *TableDefinition::findColumn(const QString &columnName) const
{
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const ColumnDefinition &column) {
        return column.name.compare(columnName, Qt::CaseInsensitive) == 0;
    });
    return found == columns.end() ? nullptr : &*found;
}

const IndexDefinition *TableDefinition::primaryKey() const
{
    const auto found = std::find_if(indexes.begin(), indexes.end(), [](const IndexDefinition &index) { return index.isPrimary; });
    return found == indexes.end() ? nullptr : &*found;
}

QByteArray definitionBytes(const Pager &pager, std::uint32_t firstPage)
{
    QByteArray bytes;
    std::uint32_t pagesLeft = MostPages;
    for (std::uint32_t number = firstPage; number != 0; --pagesLeft) {
        if (pagesLeft == 0) {
            throw Fault(QStringLiteral("the pages of the definition run in a circle"));
        }
        const Bytes page = pager.page(number, PageType::Definition);
        const std::size_t skipped = number == firstPage && bytes.isEmpty() ? 0 : PageHeader;
        bytes.append(reinterpret_cast<const char *>(page.data() + skipped), static_cast<qsizetype>(PageSize - skipped));
        number = page.longAt(NextPageOffset);
    }
    return bytes;
}

TableDefinition readDefinition(const Pager &pager, std::uint32_t firstPage)
{
    return locating(firstPage, std::nullopt, [&] {
        const QByteArray whole = definitionBytes(pager, firstPage);
        const Bytes bytes(reinterpret_cast<const unsigned char *>(whole.constData()), static_cast<std::size_t>(whole.size()));
        TableDefinition table;
        table.page = firstPage;
        table.rowCount = bytes.longAt(RowCountOffset);
        table.lastAutoNumber = static_cast<std::int32_t>(bytes.longAt(AutoNumberOffset));
        table.isSystem = bytes.byteAt(TableTypeOffset) == SystemTable;
        table.columnCount = bytes.shortAt(ColumnCountOffset);
        table.variableCount = bytes.shortAt(VariableCountOffset);
        table.ownedPages = positionAt(bytes, OwnedPagesOffset);
        table.freePages = positionAt(bytes, FreePagesOffset);
        std::size_t at = CountsOffset + CountSize * std::size_t{bytes.longAt(IndexesOffset)};
        table.columns = readColumns(bytes, at);
        readIndexes(bytes, at, table);
        table.longValues = readLongValuePages(bytes, at);
        return table;
    });
}

} // namespace jet
