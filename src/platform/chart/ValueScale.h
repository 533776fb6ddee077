// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

namespace chart
{

/// The vertical axis: even steps from which people count, 0 always among them.
struct ValueScale {
    double low = 0.0;
    double high = 1.0;
    std::vector<double> ticks;

    /// Steps of 1, 2 or 5 and their tens, not closer than `closest` on a height in the same unit. Whole values get whole steps.
    static ValueScale over(double least, double greatest, bool whole, double height, double closest);
};

/// A value as the chart writes it: no more digits than it has, the user's decimal sign.
QString valueText(double value);

/// Which labels of a row of labels are written, counted from 0: every one if they fit, else the first, the last and even steps
/// between them. `widths` are those of the texts, in the unit of `spacing`; neighbours keep `gap` between them.
std::vector<int> labelsThatFit(const std::vector<double> &widths, double spacing, double gap);

} // namespace chart
