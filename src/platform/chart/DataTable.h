// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace chart
{

/// Values by row (point) and column (series), both counted from 1. A cell that was never set is empty, not 0. An index outside
/// raises error 9, a negative size error 5.
class DataTable
{
public:
    DataTable() = default;
    DataTable(int rows, int columns);

    int rows() const { return rows_; }
    int columns() const { return columns_; }
    std::optional<double> value(int row, int column) const;
    void setValue(int row, int column, std::optional<double> value);
    /// An empty cell counts as 0.
    void add(int row, int column, double amount);
    /// Sum of a column; nothing when every cell of it is empty.
    std::optional<double> columnSum(int column) const;
    /// New cells are empty; cells beyond the new size are dropped.
    void resize(int rows, int columns);

private:
    std::size_t cellIndex(int row, int column) const;

    int rows_ = 0;
    int columns_ = 0;
    std::vector<std::optional<double>> cells_;
};

} // namespace chart
