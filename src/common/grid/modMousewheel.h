// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>

#include <cstdint>

class QWidget;

namespace controls
{
class FlexGrid;
}

/// The mouse wheel over a screen serves the grid that last got the focus.
///
/// Hook_Wheel takes every wheel turn over the window from then on and scrolls the target by it, until the window closes or
/// Unhook_Wheel is called. A window is hooked once; a second call changes nothing. Without a target it is the window itself.
void Hook_Wheel(QWidget &window, QWidget *target = nullptr);
/// Without a hook it does nothing.
void Unhook_Wheel(QWidget &window);
/// Scrolls a scrollable target by one wheel message, once a whole notch has come together.
void Wheel_Scroll(QWidget &target, bool up, std::uint16_t amount);

/// Hooks the window for each of the grids whenever it gets the focus.
void serveFocusedGrid(QWidget &window, const QList<controls::FlexGrid *> &grids);
