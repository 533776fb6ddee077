// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/FlexGrid.h"
#include "platform/controls/GridPainter.h"
#include "platform/controls/GridState.h"

#include <QPoint>

namespace controls
{

/// The state of one grid and the upkeep of its scroll bars and repaints.
class FlexGrid::Private
{
public:
    explicit Private(FlexGrid &grid) : grid_(grid) {}

    GridState state{DefaultRowHeight, DefaultColWidth};
    KeyClick keyClicks = KeyClick::None;
    bool redraw = true;
    /// The cell of the last press, for the double click that may follow after the grid has scrolled.
    std::optional<std::pair<int, int>> pressed;

    /// Error 9 unless the line is one of `count`.
    static void check(int line, int count, const char *what);
    void checkCell(int row, int col) const;
    void keepCurrentInside();

    /// The picture of cells changed; one repaint follows.
    void repaintLater();
    void painted() { repaintPending_ = false; }
    /// Counts or sizes changed: scroll bars follow before the next paint or question.
    void layoutLater();
    void layOut();
    /// False when the bars moved by a layout alone.
    bool scrolledTo(int horizontal, int vertical);
    void setFirst(const GridAxis &axis, QScrollBar *bar, int line);

    QSize viewSize() const { return viewSize_; }
    GridView view() const;
    /// Tells screen readers which cell the keys now work on.
    void announceCurrent() const;
    void announceText(int row, int col) const;

    bool isSelectable(int row, int col) const;
    /// The cell that a moving key leads to; nothing for other keys.
    std::optional<std::pair<int, int>> keyTarget(const QKeyEvent &event) const;

private:
    void layOutBar(QScrollBar *bar, GridAxis &axis, int extent);
    int neighbour(const GridAxis &axis, int line, int steps) const;

    FlexGrid &grid_;
    QSize viewSize_;
    bool repaintPending_ = false;
    bool layoutPending_ = true;
    bool layingOut_ = false;
};

void installGridAccessibility();

} // namespace controls
