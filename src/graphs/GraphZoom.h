// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

/// Size and position of the chart in its viewport, in twips. Zoom levels go from 0 to 5, and to -1 after a zoom out directly
/// after a draw; at levels 1 to 5 the chart is 1.5, 2.5, 4, 6 and 8.5 times its base.
class GraphZoom
{
public:
    static constexpr int HighestLevel = 5;
    /// Of one unit of a scroll bar.
    static constexpr int ScrollStep = 100;

    struct Extent {
        std::int32_t width = 0;
        std::int32_t height = 0;
    };

    /// On activation and draw: level 0, and the chart fills the viewport, which becomes its base.
    void restart(Extent viewport);
    /// After a resize of the viewport: the chart keeps its size relative to it. The level stays.
    void refit(Extent viewport);
    /// Both keep the lower edge visible.
    void zoomIn(Extent viewport);
    void zoomOut(Extent viewport);
    void scrollHorizontally(int value) { left_ = -ScrollStep * value; }
    void scrollVertically(int value, int max, Extent viewport)
    {
        top_ = viewport.height - size_.height - ScrollStep * (value - max);
    }

    int level() const { return ZoomLevel_; }
    Extent size() const { return size_; }
    std::int32_t left() const { return left_; }
    std::int32_t top() const { return top_; }
    int horizontalMax() const;
    int verticalMax() const;

private:
    void grow(int steps);

    int ZoomLevel_ = 0;
    Extent base_;
    Extent size_;
    std::int32_t left_ = 0;
    std::int32_t top_ = 0;
};
