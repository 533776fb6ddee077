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

/// Sends keys to the focused widget: plain characters, or "{TAB}" or "{ENTER}". With `wait` they are handled before it returns,
/// otherwise queued.
void Send_Keys(const QString &keys, bool wait);
