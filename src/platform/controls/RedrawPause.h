// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/FlexGrid.h"

namespace controls
{

/// Suspends a grid's repainting while it is filled. It repaints at the end of the scope, also after an error.
class RedrawPause
{
public:
    explicit RedrawPause(FlexGrid &grid) : grid_(grid) { grid_.setRedraw(false); }
    ~RedrawPause() { grid_.setRedraw(true); }
    RedrawPause(const RedrawPause &) = delete;
    RedrawPause &operator=(const RedrawPause &) = delete;

private:
    FlexGrid &grid_;
};

} // namespace controls
