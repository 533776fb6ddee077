// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/GridStore.h"

#include <algorithm>

namespace controls
{

void GridStore::setCols(int cols)
{
    const auto width = static_cast<std::size_t>(cols);
    for (StoredRow &stored : rows_) {
        if (stored.cells.size() > width) {
            stored.cells.resize(width);
        }
        std::erase_if(stored.values, [cols](const CellValue &entry) { return entry.col >= cols; });
    }
    cols_ = cols;
}

void GridStore::clear()
{
    for (StoredRow &stored : rows_) {
        stored.cells.clear();
        stored.values.clear();
    }
}

const GridCell &GridStore::at(int rowIndex, int col) const
{
    static const GridCell empty;
    const StoredRow &stored = row(rowIndex);
    const auto index = static_cast<std::size_t>(col);
    return index < stored.cells.size() ? stored.cells[index] : empty;
}

GridCell &GridStore::edit(int rowIndex, int col)
{
    StoredRow &stored = row(rowIndex);
    const auto index = static_cast<std::size_t>(col);
    if (index >= stored.cells.size()) {
        stored.cells.reserve(static_cast<std::size_t>(cols_));
        stored.cells.resize(index + 1);
    }
    return stored.cells[index];
}

void GridStore::setText(int rowIndex, int col, const QString &text)
{
    edit(rowIndex, col).text = text;
    if (!row(rowIndex).values.empty()) {
        setValue(rowIndex, col, {});
    }
}

QVariant GridStore::value(int rowIndex, int col) const
{
    const auto &values = row(rowIndex).values;
    const auto found = std::find_if(values.begin(), values.end(), [col](const CellValue &entry) { return entry.col == col; });
    return found == values.end() ? QVariant() : found->value;
}

void GridStore::setValue(int rowIndex, int col, const QVariant &value)
{
    auto &values = row(rowIndex).values;
    std::erase_if(values, [col](const CellValue &entry) { return entry.col == col; });
    if (value.isValid()) {
        values.push_back({col, value});
    }
}

} // namespace controls
