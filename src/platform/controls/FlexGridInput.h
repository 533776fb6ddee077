// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/FlexGrid.h"

class QContextMenuEvent;
class QHelpEvent;
class QKeyEvent;
class QMouseEvent;

namespace controls
{

class GridAxis;

/// Mouse, keys and tool tips of a grid.
class FlexGridInput
{
public:
    FlexGridInput(FlexGrid &grid, FlexGrid::Private &state) : grid_(grid), d_(state) {}

    void setKeyClicks(FlexGrid::KeyClick keys) { keyClicks_ = keys; }
    void setMouseSelects(bool selects) { mouseSelects_ = selects; }
    void mousePress(const QMouseEvent &event);
    void mouseMove(const QMouseEvent &event);
    void doubleClick();
    void keyPress(QKeyEvent &event);
    void contextMenu(const QContextMenuEvent &event);
    void toolTip(QHelpEvent &event) const;

private:
    bool isSelectable(int row, int col) const;
    /// The line `steps` visible lines away, at most the last one.
    int neighbour(const GridAxis &axis, int line, int steps) const;
    /// The cell that a moving key leads to; nothing for other keys.
    std::optional<std::pair<int, int>> keyTarget(const QKeyEvent &event) const;
    /// With Shift the selection grows from where it began.
    void moveTo(int row, int col, bool extends);
    bool copies(const QKeyEvent &event) const;
    bool isClick(const QKeyEvent &event) const;

    FlexGrid &grid_;
    FlexGrid::Private &d_;
    bool mouseSelects_ = false;
    FlexGrid::KeyClick keyClicks_ = FlexGrid::KeyClick::None;
    /// The cell of the last press: a double click belongs to it, also when the grid has scrolled meanwhile.
    std::optional<std::pair<int, int>> pressed_;
};

} // namespace controls
