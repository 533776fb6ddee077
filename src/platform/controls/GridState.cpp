// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/GridState.h"

#include "platform/controls/CellColours.h"

#include <QStringList>

#include <algorithm>

namespace controls
{

namespace
{

QString colourName(qint32 colour)
{
    switch (colour) {
    case cellColour::Yellow:
        return GridState::tr("yellow");
    case cellColour::Red:
        return GridState::tr("red");
    case cellColour::Green:
        return GridState::tr("green");
    case cellColour::PaleYellow:
        return GridState::tr("pale yellow");
    default:
        return GridState::tr("marked");
    }
}

/// Widens [from, to] around `from` as long as neighbours are equal.
template <typename Equal> std::pair<int, int> widen(int from, int first, int last, Equal equal)
{
    int low = from;
    int high = from;
    while (low > first && equal(low - 1)) {
        --low;
    }
    while (high < last && equal(high + 1)) {
        ++high;
    }
    return {low, high};
}

} // namespace

bool GridState::isColoured(int cellRow, int cellCol) const
{
    const qint32 colour = store.at(cellRow, cellCol).colour;
    return colour != GridCell::NoColour && colour != cellColour::White;
}

CellAlignment GridState::alignment(int cellRow, int cellCol) const
{
    const CellAlignment own = store.at(cellRow, cellCol).alignment;
    return own == CellAlignment::Default ? colAlignments[static_cast<std::size_t>(cellCol)] : own;
}

bool GridState::drawnBold(int cellRow, int cellCol) const
{
    return cellRow < rows.fixed() || store.at(cellRow, cellCol).bold;
}

bool GridState::showsTick(int cellRow, int cellCol) const
{
    const GridCell &cell = store.at(cellRow, cellCol);
    return ticks && cell.text.isEmpty() && (cell.colour == cellColour::Yellow || cell.colour == cellColour::Red)
        && !isNameless(cellRow);
}

bool GridState::isNameless(int cellRow) const
{
    return nameColumn >= 0 && cellRow >= rows.fixed() && store.at(cellRow, nameColumn).text.isEmpty();
}

CellSpan GridState::spanOf(int cellRow, int cellCol, int firstRow, int lastRow, int firstCol, int lastCol) const
{
    CellSpan span{cellRow, cellCol, 1, 1};
    const QString &text = store.at(cellRow, cellCol).text;
    if (text.isEmpty()) {
        return span;
    }
    if (mergedRows.count(cellRow) > 0) {
        const bool fixed = cellCol < cols.fixed();
        const auto equal = [&](int other) { return (other < cols.fixed()) == fixed && store.at(cellRow, other).text == text; };
        const auto [low, high] = widen(cellCol, firstCol, lastCol, equal);
        span.col = low;
        span.cols = high - low + 1;
    } else if (mergedCols.count(cellCol) > 0) {
        const bool fixed = cellRow < rows.fixed();
        const auto equal = [&](int other) { return (other < rows.fixed()) == fixed && store.at(other, cellCol).text == text; };
        const auto [low, high] = widen(cellRow, firstRow, lastRow, equal);
        span.row = low;
        span.rows = high - low + 1;
    }
    return span;
}

CellSpan GridState::selection() const
{
    const auto [otherRow, otherCol] = anchor.value_or(std::pair(row, col));
    const auto [firstRow, lastRow] = std::minmax(row, std::min(otherRow, rows.count() - 1));
    const auto [firstCol, lastCol] = std::minmax(col, std::min(otherCol, cols.count() - 1));
    return {firstRow, firstCol, lastRow - firstRow + 1, lastCol - firstCol + 1};
}

QString GridState::columnName(int cellCol) const
{
    QStringList names;
    for (int header = 0; header < rows.fixed(); ++header) {
        const QString &text = store.at(header, cellCol).text;
        if (!text.isEmpty() && !names.contains(text)) {
            names += text;
        }
    }
    return names.join(u' ');
}

QString GridState::rowName(int cellRow) const
{
    for (int header = cols.fixed() - 1; header >= 0; --header) {
        const QString &text = store.at(cellRow, header).text;
        if (!text.isEmpty() && !cols.isHidden(header)) {
            return QStringList{columnName(header), text}.join(u' ').trimmed();
        }
    }
    return GridState::tr("Row %1").arg(cellRow - rows.fixed() + 1);
}

QString GridState::describe(int cellRow, int cellCol) const
{
    if (describer && !isFixed(cellRow, cellCol)) {
        return describer(cellRow, cellCol);
    }
    const GridCell &cell = store.at(cellRow, cellCol);
    if (isFixed(cellRow, cellCol)) {
        return cell.text;
    }
    QStringList parts{rowName(cellRow), columnName(cellCol), cell.text};
    if (isColoured(cellRow, cellCol)) {
        parts += colourName(cell.colour);
    }
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

} // namespace controls
