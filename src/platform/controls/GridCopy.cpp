// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/GridCopy.h"

#include <QStringList>

#include <algorithm>

namespace controls
{

QString copiedCells(const GridState &state, const CellSpan &span)
{
    QStringList lines;
    for (int row = span.row; row < span.row + span.rows; ++row) {
        QStringList cells;
        for (int col = span.col; col < span.col + span.cols; ++col) {
            if (!state.rows.isHidden(row) && !state.cols.isHidden(col)) {
                const bool special = state.copyText && !state.isFixed(row, col);
                cells += (special ? state.copyText(row, col) : state.store.at(row, col).text).simplified();
            }
        }
        if (std::any_of(cells.begin(), cells.end(), [](const QString &cell) { return !cell.isEmpty(); })) {
            lines += cells.join(u'\t');
        }
    }
    return lines.join(u'\n');
}

QString copiedSelection(const GridState &state)
{
    CellSpan span = state.selection();
    const bool single = span.rows == 1 && span.cols == 1;
    if (state.selectedRow >= 0) {
        span = {single ? state.selectedRow : span.row, 0, span.rows, state.cols.count()};
    }
    return copiedCells(state, span);
}

QString copiedGrid(const GridState &state)
{
    return copiedCells(state, {0, 0, state.rows.count(), state.cols.count()});
}

} // namespace controls
