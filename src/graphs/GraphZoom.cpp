// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/GraphZoom.h"

#include "platform/basic/Numbers.h"

void GraphZoom::restart(Extent viewport)
{
    ZoomLevel_ = 0;
    refit(viewport);
    left_ = 0;
    top_ = 0;
}

void GraphZoom::refit(Extent viewport)
{
    base_ = viewport;
    size_ = viewport;
    // The sum of the halves of all levels from 1 to the current one.
    grow(ZoomLevel_ * (ZoomLevel_ + 1) / 2);
}

void GraphZoom::zoomIn(Extent viewport)
{
    ++ZoomLevel_;
    grow(ZoomLevel_);
    top_ = viewport.height - size_.height;
}

void GraphZoom::zoomOut(Extent viewport)
{
    grow(-ZoomLevel_);
    top_ = viewport.height - size_.height;
    --ZoomLevel_;
    if (ZoomLevel_ == 0) {
        restart(viewport);
    }
}

void GraphZoom::grow(int steps)
{
    size_.width += basic::toLong32(steps * base_.width / 2.0);
    size_.height += basic::toLong32(steps * base_.height / 2.0);
}

int GraphZoom::horizontalMax() const
{
    return basic::toInteger16(static_cast<double>(size_.width - base_.width) / ScrollStep);
}

int GraphZoom::verticalMax() const
{
    return basic::toInteger16(static_cast<double>(size_.height - base_.height) / ScrollStep);
}
