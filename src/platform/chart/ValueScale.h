// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

namespace chart
{

/// Range and ticks of the vertical axis: even steps that always include 0.
struct ValueScale {
    double low = 0.0;
    double high = 1.0;
    std::vector<double> ticks;

    /// Steps of 1, 2 or 5 times a power of ten, not closer than `closest` on a height in the same unit. Whole values get whole
    /// steps.
    static ValueScale over(double least, double greatest, bool whole, double height, double closest);
};

/// A value without trailing zeros, with the decimal sign of the user's locale.
QString valueText(double value);

/// Indexes of the labels to write, counted from 0: all of them if they fit, else the first, the last and even steps
/// between them. `widths` are those of the texts, in the unit of `spacing`; at least `gap` is left between neighbours.
std::vector<int> labelsThatFit(const std::vector<double> &widths, double spacing, double gap);

} // namespace chart
