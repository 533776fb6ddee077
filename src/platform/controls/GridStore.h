// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/CellAlignment.h"

#include <QString>
#include <QVariant>

#include <vector>

namespace controls
{

/// One stored cell: 32 bytes, so that a list of 50,000 rows stays small.
struct GridCell {
    static constexpr qint32 NoColour = -1;

    QString text;
    /// 0xBBGGRR.
    qint32 colour = NoColour;
    bool bold = false;
    CellAlignment alignment = CellAlignment::Default;
};

/// The cells of a grid. A row takes memory only once a cell is changed; cells never written read as empty. Rows and columns are
/// not checked here.
class GridStore
{
public:
    int rows() const { return static_cast<int>(rows_.size()); }
    int cols() const { return cols_; }
    void setRows(int rows) { rows_.resize(static_cast<std::size_t>(rows)); }
    void setCols(int cols);
    void clear();

    const GridCell &at(int row, int col) const;
    GridCell &edit(int row, int col);
    /// Sets the text and removes the value.
    void setText(int row, int col, const QString &text);
    QVariant value(int row, int col) const;
    void setValue(int row, int col, const QVariant &value);

private:
    struct CellValue {
        int col;
        QVariant value;
    };
    struct StoredRow {
        std::vector<GridCell> cells;
        std::vector<CellValue> values;
    };

    StoredRow &row(int index) { return rows_[static_cast<std::size_t>(index)]; }
    const StoredRow &row(int index) const { return rows_[static_cast<std::size_t>(index)]; }

    std::vector<StoredRow> rows_;
    int cols_ = 0;
};

} // namespace controls
