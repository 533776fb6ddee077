// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/TableWriter.h"

#include <QString>

#include <functional>
#include <utility>
#include <vector>

namespace jet
{

/// Page of the definition of MSysACEs, the rights on objects.
constexpr std::uint32_t RightsPage = 3;

/// One of the system tables, its rows read and added by the names of its columns.
class SystemTable
{
public:
    using NamedValues = std::vector<std::pair<QString, Value>>;

    SystemTable(PageAllocator &allocator, const QString &name, std::uint32_t definitionPage);

    /// The values of one row.
    class Cells
    {
    public:
        Cells(const TableDefinition &table, const std::vector<Value> &values) : table_(table), values_(values) {}
        Value value(const QString &column) const;

    private:
        const TableDefinition &table_;
        const std::vector<Value> &values_;
    };
    void forEach(const std::function<void(const Cells &)> &take) const;
    void insert(const NamedValues &values);
    void flush() { writer_.flush(); }

private:
    PageAllocator &allocator_;
    TableDefinition table_;
    TableWriter writer_;
};

} // namespace jet
