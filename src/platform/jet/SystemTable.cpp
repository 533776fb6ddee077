// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/SystemTable.h"

#include "platform/jet/RowReader.h"
#include "platform/jet/UsageMapEditor.h"

namespace jet
{

namespace
{

TableDefinition named(TableDefinition table, const QString &name)
{
    table.name = name;
    return table;
}

std::size_t positionOf(const TableDefinition &table, const QString &column)
{
    const ColumnDefinition *found = table.findColumn(column);
    if (!found) {
        throw Fault(QStringLiteral("it has no column %1").arg(column));
    }
    return static_cast<std::size_t>(found - table.columns.data());
}

} // namespace

SystemTable::SystemTable(PageAllocator &allocator, const QString &name, std::uint32_t definitionPage)
    : allocator_(allocator), table_(named(readDefinition(allocator.pager(), definitionPage), name)),
      writer_(allocator, table_, true)
{
}

Value SystemTable::Cells::value(const QString &column) const
{
    return values_[positionOf(table_, column)];
}

void SystemTable::forEach(const std::function<void(const Cells &)> &take) const
{
    RowPages pages(allocator_.pager());
    RowDecoder decoder(allocator_.pager(), table_);
    std::vector<Value> values;
    forEachRow(allocator_.pager(), table_.page, pages.of(table_), [&](RowPosition, Bytes bytes) {
        decoder.decode(bytes, values);
        take(Cells(table_, values));
    });
}

void SystemTable::insert(const NamedValues &named)
{
    std::vector<Value> values(table_.columns.size());
    for (const auto &[column, value] : named) {
        values[positionOf(table_, column)] = value;
    }
    writer_.insert(values);
}

} // namespace jet
