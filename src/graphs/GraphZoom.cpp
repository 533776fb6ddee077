// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/GraphZoom.h"

#include "platform/basic/Numbers.h"

void GraphZoom::fill(Extent viewport)
{
    size_ = viewport;
    base_ = viewport;
    left_ = 0;
    top_ = 0;
}

void GraphZoom::restart(Extent viewport)
{
    ZoomLevel_ = 0;
    fill(viewport);
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
        size_ = viewport;
        top_ = 0;
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
