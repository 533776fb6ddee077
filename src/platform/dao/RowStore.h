// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Sqlite.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dao
{

/// One value as SQLite stores it.
struct Cell {
    enum class Kind : std::uint8_t { Null, Integer, Real, Text };
    union {
        std::int64_t integer;
        double real;
        /// Offset of a text in the store's bytes.
        std::uint64_t offset;
    };
    std::uint32_t length;
    Kind kind;
};

/// The rows of a result, stored compactly and decoded only when they are read. Rows and columns count from 0.
class RowStore
{
public:
    explicit RowStore(int columns, bool hasKeys) : columns_(columns), hasKeys_(hasKeys) {}

    /// Takes over the statement's current row. With keys, the key follows the last column.
    void append(const Statement &statement);
    void replace(int row, const Statement &statement);

    void clear()
    {
        cells_.clear();
        keys_.clear();
        bytes_ = {};
        replacedBytes_ = 0;
    }

    int count() const { return columns_ == 0 ? 0 : static_cast<int>(cells_.size() / static_cast<std::size_t>(columns_)); }
    const Cell &cell(int row, int column) const
    {
        return cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(column)];
    }
    std::string_view text(const Cell &cell) const { return std::string_view(bytes_).substr(cell.offset, cell.length); }
    std::int64_t key(int row) const { return keys_[static_cast<std::size_t>(row)]; }

    void setKey(int row, std::int64_t key) { keys_[static_cast<std::size_t>(row)] = key; }

    /// A number of any kind as a double; nothing for null and text.
    static std::optional<double> numberIn(const Cell &cell);
    /// What the cell holds for a field of this type; without a type by what is stored.
    Value decode(const Cell &cell, std::optional<FieldType> type) const;
    /// Whether writing `value` would leave the stored cell as it is.
    bool holds(const Cell &cell, const Value &value) const;

private:
    Cell read(const Statement &statement, int column);
    /// Drops the texts that no cell holds any more.
    void compact();

    int columns_;
    bool hasKeys_;
    std::vector<Cell> cells_;
    std::vector<std::int64_t> keys_;
    std::string bytes_;
    /// How many of the bytes belong to texts that were replaced.
    std::size_t replacedBytes_ = 0;
};

} // namespace dao
