// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/DayCells.h"

#include "platform/basic/Formats.h"
#include "platform/controls/FlexGrid.h"

void DayCells::set(int row, int col, const basic::SerialDate &day)
{
    const QDate date = day.date();
    QString &text = texts_[date.toJulianDay()];
    if (text.isEmpty()) {
        text = basic::shortDate(date);
    }
    grid_.setTextMatrix(row, col, text);
    grid_.setCellValue(row, col, QVariant::fromValue(day));
}
