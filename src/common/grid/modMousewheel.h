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
/// From Hook_Wheel on, every wheel event over the window scrolls the target, until the window closes or Unhook_Wheel is called. A
/// window is hooked once; a second call does nothing. The default target is the window itself.
void Hook_Wheel(QWidget &window, QWidget *target = nullptr);
/// Does nothing without a hook.
void Unhook_Wheel(QWidget &window);
/// Scrolls a scroll area by one wheel message, once the messages add up to a notch.
void Wheel_Scroll(QWidget &target, bool up, std::uint16_t amount);

/// Hooks the window for each of the grids when it gets the focus.
void serveFocusedGrid(QWidget &window, const QList<controls::FlexGrid *> &grids);
