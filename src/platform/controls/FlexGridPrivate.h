// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/FlexGrid.h"
#include "platform/controls/FlexGridInput.h"
#include "platform/controls/GridPainter.h"
#include "platform/controls/GridState.h"
#include "platform/controls/TextEstimate.h"

#include <optional>
#include <vector>

namespace controls
{

/// The state of one grid, its layout and its repaints.
class FlexGrid::Private
{
public:
    explicit Private(FlexGrid &grid) : input(grid, *this), grid_(grid) {}

    GridState state{DefaultRowHeight, DefaultColWidth};
    bool redraw = true;
    FlexGridInput input;

    /// Error 9 unless the line is one of `count`.
    static void check(int line, int count, const char *what);
    void checkCell(int row, int col) const;
    void clampCurrentCell();

    /// Schedules one repaint for any number of changes.
    void repaintLater();
    void painted() { repaintPending_ = false; }
    /// After a change of counts or sizes; the scroll bars follow before the next paint or query.
    void layoutLater();
    void layOut();
    /// False when only a layout moved the bars.
    bool scrolledTo(int horizontal, int vertical);
    void setFirst(const GridAxis &axis, QScrollBar *bar, int line);
    /// Widens a column that shares the width for this text.
    void measure(int row, int col);
    void measureAll();
    void forgetTexts() { content_.clear(); }
    void forgetFont() { estimate_.reset(); }
    /// Scrolls as little as needed to show a line.
    void reveal(const GridAxis &axis, QScrollBar *bar, int line, int extent);

    QSize viewSize() const { return viewSize_; }
    GridView view() const;
    /// Notifies screen readers of the current cell.
    void announceCurrent() const;
    void announceText(int row, int col) const;

private:
    void layOutBar(QScrollBar *bar, GridAxis &axis, int extent);
    void reserveContent();

    FlexGrid &grid_;
    QSize viewSize_;
    /// The widest text of a column so far, in pixels, and the greatest estimate: only a text with a greater one is measured.
    struct Content {
        int width = 0;
        double estimate = 0.0;
    };
    std::vector<Content> content_;
    std::optional<TextEstimate> estimate_;
    bool repaintPending_ = false;
    bool layoutPending_ = true;
    bool layingOut_ = false;
};

} // namespace controls
