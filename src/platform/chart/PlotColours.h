// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

#include <array>

namespace chart
{

/// Background, text and line colours, and the defaults of the series. Paper is always drawn with light().
struct PlotColours {
    static constexpr int SeriesColours = 5;

    QColor background;
    QColor text;
    QColor muted;
    QColor line; ///< grid
    QColor border; ///< axes
    std::array<QColor, SeriesColours> series;

    static PlotColours light();
    static PlotColours dark();
};

} // namespace chart
