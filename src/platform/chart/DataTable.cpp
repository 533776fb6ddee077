// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/DataTable.h"

#include "platform/basic/RunTimeError.h"

#include <algorithm>

namespace chart
{

namespace
{

std::size_t sizeOf(int rows, int columns)
{
    if (rows < 0 || columns < 0) {
        throw basic::RunTimeError(basic::ErrorNumber::InvalidArgument, QStringLiteral("Invalid procedure call or argument"));
    }
    return static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns);
}

} // namespace

DataTable::DataTable(int rows, int columns) : rows_(rows), columns_(columns), cells_(sizeOf(rows, columns)) {}

std::size_t DataTable::cellIndex(int row, int column) const
{
    if (row < 1 || row > rows_ || column < 1 || column > columns_) {
        throw basic::RunTimeError(basic::ErrorNumber::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
    }
    return static_cast<std::size_t>(row - 1) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(column - 1);
}

std::optional<double> DataTable::value(int row, int column) const
{
    return cells_[cellIndex(row, column)];
}

void DataTable::setValue(int row, int column, std::optional<double> value)
{
    cells_[cellIndex(row, column)] = value;
}

void DataTable::add(int row, int column, double amount)
{
    std::optional<double> &cell = cells_[cellIndex(row, column)];
    cell = cell.value_or(0.0) + amount;
}

std::optional<double> DataTable::columnSum(int column) const
{
    std::optional<double> sum;
    for (int row = 1; row <= rows_; ++row) {
        if (const auto cell = value(row, column)) {
            sum = sum.value_or(0.0) + *cell;
        }
    }
    return sum;
}

void DataTable::resize(int rows, int columns)
{
    DataTable other(rows, columns);
    for (int row = 1; row <= std::min(rows, rows_); ++row) {
        for (int column = 1; column <= std::min(columns, columns_); ++column) {
            other.setValue(row, column, value(row, column));
        }
    }
    *this = std::move(other);
}

} // namespace chart
