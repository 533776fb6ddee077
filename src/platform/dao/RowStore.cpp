// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/RowStore.h"

#include <sqlite3.h>

#include <limits>
#include <utility>

namespace dao
{

Cell RowStore::read(const Statement &statement, int column)
{
    sqlite3_stmt *handle = statement.get();
    Cell cell{{0}, 0, Cell::Kind::Null};
    switch (sqlite3_column_type(handle, column)) {
    case SQLITE_INTEGER:
        cell.kind = Cell::Kind::Integer;
        cell.integer = sqlite3_column_int64(handle, column);
        break;
    case SQLITE_FLOAT:
        cell.kind = Cell::Kind::Real;
        cell.real = sqlite3_column_double(handle, column);
        break;
    case SQLITE_NULL:
        break;
    default: {
        const std::string_view text = statement.textAt(column);
        cell.kind = Cell::Kind::Text;
        cell.offset = bytes_.size();
        cell.length = static_cast<std::uint32_t>(text.size());
        bytes_.append(text);
    }
    }
    return cell;
}

void RowStore::append(const Statement &statement)
{
    for (int column = 0; column < columns_; ++column) {
        cells_.push_back(read(statement, column));
    }
    if (hasKeys_) {
        keys_.push_back(statement.integerAt(columns_));
    }
}

void RowStore::replace(int row, const Statement &statement)
{
    const std::size_t first = static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_);
    for (int column = 0; column < columns_; ++column) {
        Cell &cell = cells_[first + static_cast<std::size_t>(column)];
        replacedBytes_ += cell.kind == Cell::Kind::Text ? cell.length : 0;
        cell = read(statement, column);
    }
    // An open set may read a row again any number of times.
    if (replacedBytes_ > bytes_.size() / 2) {
        compact();
    }
}

void RowStore::compact()
{
    std::string compacted;
    compacted.reserve(bytes_.size() - replacedBytes_);
    for (Cell &cell : cells_) {
        if (cell.kind == Cell::Kind::Text) {
            const std::string_view held = text(cell);
            cell.offset = compacted.size();
            compacted.append(held);
        }
    }
    bytes_ = std::move(compacted);
    replacedBytes_ = 0;
}

std::optional<double> RowStore::numberIn(const Cell &cell)
{
    switch (cell.kind) {
    case Cell::Kind::Integer:
        return static_cast<double>(cell.integer);
    case Cell::Kind::Real:
        return cell.real;
    case Cell::Kind::Null:
    case Cell::Kind::Text:
        break;
    }
    return std::nullopt;
}

Value RowStore::decode(const Cell &cell, std::optional<FieldType> type) const
{
    if (cell.kind == Cell::Kind::Null) {
        return Null{};
    }
    if (cell.kind == Cell::Kind::Text) {
        const std::string_view bytes = text(cell);
        return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
    if (type == FieldType::Boolean) {
        return numberIn(cell) != 0.0;
    }
    if (type == FieldType::Date) {
        return basic::SerialDate(*numberIn(cell));
    }
    // A sum may go beyond 32 bits and then comes as a double.
    const bool fits = cell.kind == Cell::Kind::Integer && cell.integer >= std::numeric_limits<std::int32_t>::min()
        && cell.integer <= std::numeric_limits<std::int32_t>::max();
    if (fits && type != FieldType::Single && type != FieldType::Double) {
        return static_cast<std::int32_t>(cell.integer);
    }
    return type == FieldType::Single ? static_cast<double>(static_cast<float>(*numberIn(cell))) : *numberIn(cell);
}

bool RowStore::holds(const Cell &cell, const Value &value) const
{
    struct Same {
        const RowStore &rows;
        const Cell &cell;
        bool isWhole(std::int64_t number) const { return cell.kind == Cell::Kind::Integer && cell.integer == number; }
        bool isReal(double number) const { return cell.kind == Cell::Kind::Real && cell.real == number; }
        bool operator()(Null) const { return cell.kind == Cell::Kind::Null; }
        bool operator()(bool flag) const { return isWhole(flag ? -1 : 0); }
        bool operator()(std::int32_t number) const { return isWhole(number); }
        bool operator()(double number) const { return isReal(number); }
        bool operator()(basic::SerialDate date) const { return isReal(date.days()); }
        bool operator()(const QString &text) const
        {
            return cell.kind == Cell::Kind::Text && text.toUtf8().toStdString() == rows.text(cell);
        }
    };
    return std::visit(Same{*this, cell}, value);
}

} // namespace dao
