// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/ValueScale.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace chart
{

namespace
{

/// The smallest step of 1, 2 or 5 times a power of ten that is not below `least`.
double roundStep(double least)
{
    const double ten = std::pow(10.0, std::floor(std::log10(least)));
    for (const double part : {1.0, 2.0, 5.0}) {
        // Equal but for rounding errors.
        if (part * ten >= least * (1.0 - 1e-9)) {
            return part * ten;
        }
    }
    return 10.0 * ten;
}

bool clear(const std::vector<double> &widths, double spacing, double gap, int one, int other)
{
    const auto width = [&widths](int label) { return widths[static_cast<std::size_t>(label)]; };
    return std::abs(other - one) * spacing >= (width(one) + width(other)) / 2.0 + gap;
}

/// Labels at multiples of `step`, counted from row 1; empty when two of them would touch.
std::vector<int> everyStep(const std::vector<double> &widths, double spacing, double gap, int step)
{
    const int count = static_cast<int>(widths.size());
    std::vector<int> shown{0};
    // The odd ones with the first; the longer steps are round numbers.
    for (int number = step == 2 ? 3 : step; number <= count; number += step) {
        const int label = number - 1;
        if (label == 0 || label == count - 1) {
            continue;
        }
        const bool nearFirst = !clear(widths, spacing, gap, 0, label);
        const bool nearLast = !clear(widths, spacing, gap, label, count - 1);
        if (nearFirst || nearLast) {
            // A step of 1 shows all labels or none.
            if (step == 1) {
                return {};
            }
            continue;
        }
        if (shown.size() > 1 && !clear(widths, spacing, gap, shown.back(), label)) {
            return {};
        }
        shown.push_back(label);
    }
    if (count > 1 && clear(widths, spacing, gap, 0, count - 1)) {
        shown.push_back(count - 1);
    }
    return shown;
}

} // namespace

ValueScale ValueScale::over(double least, double greatest, bool whole, double height, double closest)
{
    const double bottom = std::min(0.0, least);
    const double top = std::max(0.0, greatest);
    const double spread = top > bottom ? top - bottom : 1.0;
    double step = roundStep(spread * closest / std::max(height, closest));
    if (whole) {
        step = std::max(step, 1.0);
    }
    const double first = std::floor(bottom / step + 1e-9);
    const double last = std::max(std::ceil(top / step - 1e-9), first + 1.0);
    ValueScale scale{first * step, last * step, {}};
    for (double number = first; number <= last; number += 1.0) {
        scale.ticks.push_back(number * step);
    }
    return scale;
}

QString valueText(double value)
{
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    const bool whole = value == std::floor(value) && std::abs(value) < 1e15;
    return whole ? locale.toString(value, 'f', 0) : locale.toString(value, 'g', 6);
}

std::vector<int> labelsThatFit(const std::vector<double> &widths, double spacing, double gap)
{
    if (widths.empty()) {
        return {};
    }
    const int count = static_cast<int>(widths.size());
    for (int ten = 1; ten <= count; ten *= 10) {
        for (const int part : {1, 2, 5}) {
            std::vector<int> shown = everyStep(widths, spacing, gap, part * ten);
            if (!shown.empty()) {
                return shown;
            }
        }
    }
    return everyStep(widths, spacing, gap, count);
}

} // namespace chart
