// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace chart
{

/// How the whole chart is drawn. The numbers are those of the chart type list.
enum class ChartType {
    Bar3d = 0,
    Bar2d = 1,
    Line3d = 2,
    Line2d = 3,
    Area3d = 4,
    Area2d = 5,
    Step3d = 6,
    Step2d = 7,
    Combination3d = 8,
    Combination2d = 9,
    Pie2d = 14,
    XY2d = 16,
};

/// How one series is drawn; it follows the chart type and differs between series on a combination chart alone.
enum class SeriesType {
    Bar3d = 0,
    Bar2d = 1,
    Line3d = 5,
    Line2d = 6,
    Area3d = 7,
    Area2d = 8,
    Step3d = 9,
    Step2d = 10,
    XY2d = 11,
    Pie2d = 24,
};

enum class PenStyle {
    NoLine = 0,
    Solid = 1,
    Dashed = 2,
    Dotted = 3,
    DashDot = 4,
    DashDotDot = 5,
    Ditted = 6,
    DashDitted = 7,
    DashDitDit = 8,
};

enum class MarkerStyle {
    Dash = 0,
    Plus = 1,
    X = 2,
    Star = 3,
    Circle = 4,
    Square = 5,
    Diamond = 6,
    Triangle = 7,
    DownTriangle = 8,
    FilledCircle = 9,
    FilledSquare = 10,
    FilledDiamond = 11,
    FilledTriangle = 12,
    FilledDownTriangle = 13,
    ThreeDimensionalBall = 14,
    None = 15,
};

/// Twips of a stored width or size to a logical pixel.
inline constexpr int TwipsPerPixel = 15;

/// Where the value of a point is written.
enum class LabelLocation { None = 0, AbovePoint = 1 };

/// Horizontal, vertical, second vertical and depth axis.
enum class AxisId { X = 0, Y = 1, Y2 = 2, Z = 3 };

/// The parts of a series that have a colour of their own.
enum class ColourRole { Pen, Brush, MarkerPen, MarkerFill };

} // namespace chart
