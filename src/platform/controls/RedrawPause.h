// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/FlexGrid.h"

namespace controls
{

/// Keeps a grid from repainting while it is filled. At the end it paints whatever stands, also when an error ends the filling.
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
