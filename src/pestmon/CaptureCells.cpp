// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/CaptureCells.h"

#include "pestmon/NumberRange.h"
#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/Marks.h"

namespace capture
{

using controls::mark::Green;
using controls::mark::White;
using controls::mark::Yellow;

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

CellPicture storedPoint(std::int16_t count)
{
    return {QString::number(count), count == 0 ? White : Yellow, count};
}

CellPicture storedTotal(std::int16_t total)
{
    return {QString::number(total), total == 0 ? White : Green, total};
}

CellPicture changedTotal(std::int16_t total)
{
    return total == 0 ? CellPicture{QString(), White, 0} : CellPicture{QString::number(total), Green, total};
}

CellPicture typedPoint(const QString &typed)
{
    return tellingRange(QStringLiteral("A count"), [&] {
        const double number = basic::Val(typed);
        const QString text = basic::formatFixed(number, 0);
        return CellPicture{text, number == 0.0 ? White : Yellow, basic::toInteger16(basic::Val(text))};
    });
}

CellPicture typedTotal(const QString &typed)
{
    return tellingRange(QStringLiteral("A total"), [&] {
        const double number = basic::Val(typed);
        if (number == 0.0) {
            return CellPicture{QString(), White, 0};
        }
        const QString text = basic::formatFixed(number, 0);
        return CellPicture{text, Green, basic::toInteger16(basic::Val(text))};
    });
}

std::int16_t runningTotal(std::int16_t total, std::int16_t oldValue, std::int16_t newValue)
{
    return tellingRange(QStringLiteral("A total"),
                        [&] { return basic::toInteger16(static_cast<double>(newValue) - oldValue + total); });
}

} // namespace capture
