// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/SerialDate.h"

#include <QHash>
#include <QString>

namespace controls
{
class FlexGrid;
}

/// Writes days into grid cells as short dates, with the day as the cell's value. Each day's text is formatted once, since a long
/// list contains each day several times.
class DayCells
{
public:
    explicit DayCells(controls::FlexGrid &grid) : grid_(grid) {}
    void set(int row, int col, const basic::SerialDate &day);

private:
    controls::FlexGrid &grid_;
    /// By Julian day.
    QHash<qint64, QString> texts_;
};
