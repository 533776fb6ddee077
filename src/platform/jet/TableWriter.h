// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/IndexTree.h"
#include "platform/jet/LongValueWriter.h"
#include "platform/jet/RowSpace.h"
#include "platform/jet/TableDefinition.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace jet
{

class RowBytes;
class RowEditor;

/// New values by the column's position in TableDefinition::columns.
using Changes = std::vector<std::pair<std::size_t, Value>>;

struct Inserted {
    RowPosition position;
    /// What the autonumber column got, when it was given null.
    std::optional<std::int32_t> autoNumber;
};

/// Changes the rows of one table, and with them its indexes, maps and counts.
class TableWriter
{
public:
    /// Error 3027 for a table that cannot be kept consistent, naming why. `isCatalogue` lets the names of the catalogue be
    /// indexed.
    TableWriter(PageAllocator &allocator, TableDefinition &table, bool isCatalogue);
    TableWriter(const TableWriter &) = delete;
    TableWriter &operator=(const TableWriter &) = delete;

    /// Values in the order of the columns. Errors 3022 duplicate key, 3058 null in a key, 3047 row too long; then nothing has
    /// changed.
    Inserted insert(const std::vector<Value> &values);
    /// False when there is no row at the position.
    bool update(RowPosition position, const Changes &changes);
    bool remove(RowPosition position);
    /// The row with that primary key, the values in the order of its columns.
    std::optional<RowPosition> findByKey(const std::vector<Value> &key);
    /// Puts indexes and counts back into their pages.
    void flush();

private:
    /// Where a row is: its position, and its new location if it has moved.
    struct Location {
        RowPosition position;
        std::optional<RowPosition> movedTo;
        Bytes bytes;
    };

    bool mayReuseSlots();
    std::optional<Location> locate(RowPosition position) const;
    void move(const Location &from, const QByteArray &row);
    std::vector<Value> indexedValues(Bytes row) const;
    std::int32_t nextAutoNumber(Changes &values, std::optional<std::int32_t> &given) const;
    QByteArray change(RowEditor &row, const Changes &changes, const std::vector<Value> *oldValues, std::vector<Value> &values);
    void requireKeys(const std::vector<Value> &values, const std::vector<Value> *oldValues);
    void setCell(RowEditor &row, const ColumnDefinition &column, const Value &value) const;
    void setLongCell(RowEditor &row, const ColumnDefinition &column, const Value &value);
    static QByteArray longCell(Bytes row, const ColumnDefinition &column);
    void removeLongValue(const ColumnDefinition &column, const QByteArray &cell);
    LongValueWriter &longValues(const ColumnDefinition &column);
    void reindex(RowPosition position, const std::vector<Value> *oldValues, const std::vector<Value> *newValues);

    PageAllocator &allocator_;
    TableDefinition &table_;
    RowSpace space_;
    /// In the order of TableDefinition::indexes.
    std::vector<IndexTree> trees_;
    std::map<std::uint16_t, LongValueWriter> longValues_;
};

} // namespace jet
