// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/CaptureCells.h"

#include "pestmon/NumberRange.h"
#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/CellColours.h"

namespace pestmon::capture
{

using controls::cellColour::Green;
using controls::cellColour::Red;
using controls::cellColour::White;
using controls::cellColour::Yellow;

std::optional<PestColumn> pestColumn(int column, int pests)
{
    if (column < FirstPestColumn || column >= columnsFor(pests)) {
        return {};
    }
    const int offset = column - FirstPestColumn;
    const int value = offset % ColumnsPerPest;
    if (value == 0) {
        return {};
    }
    return PestColumn{offset / ColumnsPerPest + 1, value};
}

std::optional<CellPosition> neighbourCell(CellPosition cell, int pests, int lastPointRow, Direction direction)
{
    const auto column = pestColumn(cell.col, pests);
    if (!column) {
        return {};
    }
    const int step = direction == Direction::Next ? 1 : -1;
    const int pest = column->pest + step;
    if (pest >= 1 && pest <= pests) {
        return CellPosition{cell.row, valueColumn(pest, column->value)};
    }
    const int row = cell.row + step;
    if (row < FirstPointRow || row > lastPointRow) {
        return {};
    }
    return CellPosition{row, valueColumn(direction == Direction::Next ? 1 : pests, column->value)};
}

CellDisplay answer(bool yes)
{
    return {QString(), yes ? Red : White, static_cast<std::int16_t>(yes ? 1 : 0)};
}

CellDisplay storedPoint(std::int16_t count)
{
    return {QString::number(count), count == 0 ? White : Yellow, count};
}

CellDisplay storedTotal(std::int16_t total)
{
    return {QString::number(total), total == 0 ? White : Green, total};
}

CellDisplay changedTotal(std::int16_t total)
{
    return total == 0 ? CellDisplay{QString(), White, 0} : CellDisplay{QString::number(total), Green, total};
}

CellDisplay typedPoint(const QString &typed)
{
    return describingRange(QStringLiteral("A count"), [&] {
        const double number = basic::Val(typed);
        const QString text = basic::formatFixed(number, 0);
        return CellDisplay{text, number == 0.0 ? White : Yellow, basic::toInteger16(basic::Val(text))};
    });
}

CellDisplay typedTotal(const QString &typed)
{
    return describingRange(QStringLiteral("A total"), [&] {
        const double number = basic::Val(typed);
        if (number == 0.0) {
            return CellDisplay{QString(), White, 0};
        }
        const QString text = basic::formatFixed(number, 0);
        return CellDisplay{text, Green, basic::toInteger16(basic::Val(text))};
    });
}

std::int16_t runningTotal(std::int16_t total, std::int16_t oldValue, std::int16_t newValue)
{
    return describingRange(QStringLiteral("A total"),
                           [&] { return basic::toInteger16(static_cast<double>(newValue) - oldValue + total); });
}

} // namespace pestmon::capture
