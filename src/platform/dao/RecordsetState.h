// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Engine.h"
#include "platform/dao/Recordset.h"
#include "platform/dao/RowStore.h"

#include <memory>
#include <optional>
#include <vector>

namespace dao
{

/// The state of a recordset: the rows found, the position in them, and the row being added or edited.
struct Recordset::State {
    enum class Editing { None, Adding, Editing };

    State(std::shared_ptr<Engine> openEngine, const QString &sql, RecordsetType type);

    /// Moves by one in this direction, over rows that were deleted through this set; past either end is allowed.
    void moveBy(int direction);
    void moveToEdge(int edge);
    bool isOnRow() const { return position >= 0 && position < rows.count(); }
    /// 3021 without a current row, 3167 for a deleted one.
    void requireRow() const;
    /// Reads the current row again when this connection has written since; 3167 when it is gone.
    void refresh(bool always);
    /// 3027 when the set cannot write.
    TableInfo &requireTable() const;

    void insertRow();
    void updateRow();
    void removeRow();
    void dropEdit();

    std::shared_ptr<Engine> engine;
    std::shared_ptr<Query> query;
    RecordsetType kind;
    RowStore rows;
    std::vector<bool> removed;
    int removedCount = 0;
    int position = 0;
    /// State of the connection when the current row was read.
    std::uint64_t stamp = 0;
    std::uint64_t openStamp = 0;
    Editing editing = Editing::None;
    /// Values set since AddNew or Edit, by position in the table's fields.
    std::vector<std::optional<Value>> pending;

private:
    State(std::shared_ptr<Engine> openEngine, Engine::BoundQuery bound, RecordsetType type);
    bool isRemoved(int row) const { return removedCount > 0 && removed[static_cast<std::size_t>(row)]; }
    Statement &rowStatement();
};

} // namespace dao
