// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

#include <array>

namespace chart
{

/// Background, text and line colours, and the defaults of the series.
struct PlotColours {
    static constexpr int SeriesColours = 5;

    QColor background;
    QColor text;
    QColor muted;
    QColor line; ///< grid
    QColor border; ///< axes
    std::array<QColor, SeriesColours> series;
    /// Bars then fill their row to the fraction of a pixel, and hatches are fine.
    bool forPaper = false;

    static PlotColours light();
    static PlotColours dark();
    /// As light(), but the lightness of the series alternates, so that they differ on a grey print.
    static PlotColours paper();
};

} // namespace chart
