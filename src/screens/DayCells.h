// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/SerialDate.h"

#include <QHash>
#include <QString>

namespace controls
{
class FlexGrid;
}

/// Writes days into the cells of a grid, as short dates with the day behind them. A list of years holds each of its days several
/// times, so the text of each is made once.
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
