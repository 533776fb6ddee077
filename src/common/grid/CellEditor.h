// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;
class QString;

namespace controls
{
class FlexGrid;
}

/// Moves an edit box over the grid's current cell, two pixels in from its upper left corner. Columns and rows scrolled out at the
/// left and the top do not count.
void Place_Cell_Editor(const controls::FlexGrid &grid, QWidget &box);

/// Sends keys to the widget that has the focus: plain characters, or one of "{TAB}" and "{ENTER}". `wait` lets them be handled
/// before it returns; otherwise they are queued.
void Send_Keys(const QString &keys, bool wait);
