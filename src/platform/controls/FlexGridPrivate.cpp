// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/FlexGridPrivate.h"

#include "platform/basic/RunTimeError.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

namespace controls
{

void FlexGrid::Private::check(int line, int count, const char *what)
{
    if (line < 0 || line >= count) {
        throw basic::RunTimeError(basic::ErrorNumber::SubscriptOutOfRange,
                                  QStringLiteral("%1 %2 is not in the grid.").arg(QLatin1String(what)).arg(line));
    }
}

void FlexGrid::Private::checkCell(int row, int col) const
{
    check(row, state.rows.count(), "Row");
    check(col, state.cols.count(), "Column");
}

void FlexGrid::Private::keepCurrentInside()
{
    state.row = std::clamp(state.row, 0, std::max(0, state.rows.count() - 1));
    state.col = std::clamp(state.col, 0, std::max(0, state.cols.count() - 1));
}

void FlexGrid::Private::repaintLater()
{
    if (!repaintPending_) {
        repaintPending_ = true;
        grid_.viewport()->update();
    }
}

void FlexGrid::Private::layoutLater()
{
    if (!layoutPending_) {
        layoutPending_ = true;
        QCoreApplication::postEvent(&grid_, new QEvent(QEvent::LayoutRequest));
    }
    repaintLater();
}

void FlexGrid::Private::layOut()
{
    if (!layoutPending_ || layingOut_) {
        return;
    }
    layingOut_ = true;
    const QSize most = grid_.maximumViewportSize();
    QScrollBar *across = grid_.horizontalScrollBar();
    QScrollBar *down = grid_.verticalScrollBar();
    state.cols.spread(0);
    bool showDown = state.rows.total() > most.height();
    const int barWidth = down->sizeHint().width();
    const bool showAcross = state.cols.total() > most.width() - (showDown ? barWidth : 0);
    showDown = showDown || (showAcross && state.rows.total() > most.height() - across->sizeHint().height());
    viewSize_ = {most.width() - (showDown ? barWidth : 0), most.height() - (showAcross ? across->sizeHint().height() : 0)};
    state.cols.spread(viewSize_.width());
    layOutBar(down, state.rows, viewSize_.height());
    layOutBar(across, state.cols, viewSize_.width());
    layoutPending_ = false;
    layingOut_ = false;
}

void FlexGrid::Private::layOutBar(QScrollBar *bar, GridAxis &axis, int extent)
{
    const int last = axis.lastPosition(extent);
    const int place = std::min(axis.position(axis.first()), last);
    bar->setPageStep(axis.page(extent));
    bar->setSingleStep(1);
    bar->setRange(0, last);
    bar->setValue(place);
    axis.setFirst(axis.lineAt(place));
}

void FlexGrid::Private::setFirst(const GridAxis &axis, QScrollBar *bar, int line)
{
    layOut();
    bar->setValue(axis.position(line));
}

bool FlexGrid::Private::scrolledTo(int horizontal, int vertical)
{
    // A layout sets the bars by itself: the place among the lines that show changes with the lines hidden above.
    if (layingOut_) {
        return false;
    }
    state.cols.setFirst(state.cols.lineAt(horizontal));
    state.rows.setFirst(state.rows.lineAt(vertical));
    repaintLater();
    return true;
}

GridView FlexGrid::Private::view() const
{
    return {grid_.viewport()->size(), grid_.font(), grid_.hasFocus(), grid_.isEnabled()};
}

void FlexGrid::Private::announceCurrent() const
{
    if (QAccessible::isActive() && grid_.hasFocus()) {
        QAccessibleEvent event(&grid_, QAccessible::Focus);
        event.setChild(state.row * state.cols.count() + state.col);
        QAccessible::updateAccessibility(&event);
    }
}

void FlexGrid::Private::announceText(int row, int col) const
{
    if (row == state.row && col == state.col && QAccessible::isActive()) {
        QAccessibleEvent event(&grid_, QAccessible::NameChanged);
        event.setChild(row * state.cols.count() + col);
        QAccessible::updateAccessibility(&event);
    }
}

bool FlexGrid::Private::isSelectable(int row, int col) const
{
    return row < state.rows.count() && col < state.cols.count() && !state.isFixed(row, col);
}

int FlexGrid::Private::neighbour(const GridAxis &axis, int line, int steps) const
{
    // From a hidden line, position() already names the next one that shows; one step less leads there.
    const bool fromHidden = line < axis.count() && (axis.isHidden(line) || line < axis.fixed());
    const int place = axis.position(line) + (fromHidden && steps > 0 ? steps - 1 : steps);
    return axis.lineAt(place);
}

std::optional<std::pair<int, int>> FlexGrid::Private::keyTarget(const QKeyEvent &event) const
{
    if (event.modifiers() & (Qt::AltModifier | Qt::MetaModifier)) {
        return std::nullopt;
    }
    if (state.rows.positions() == 0 || state.cols.positions() == 0) {
        return std::nullopt;
    }
    const bool control = event.modifiers() & Qt::ControlModifier;
    const auto &rows = state.rows;
    const auto &cols = state.cols;
    const int page = rows.page(viewSize_.height());
    const int firstCol = cols.lineAt(0);
    const int lastCol = cols.lineAt(cols.positions() - 1);
    const int firstRow = rows.lineAt(0);
    const int lastRow = rows.lineAt(rows.positions() - 1);
    const int shownRow = neighbour(rows, state.row, 0);
    const int shownCol = neighbour(cols, state.col, 0);
    switch (event.key()) {
    case Qt::Key_Up:
        return std::pair(control ? firstRow : neighbour(rows, state.row, -1), shownCol);
    case Qt::Key_Down:
        return std::pair(control ? lastRow : neighbour(rows, state.row, 1), shownCol);
    case Qt::Key_Left:
        return std::pair(shownRow, control ? firstCol : neighbour(cols, state.col, -1));
    case Qt::Key_Right:
        return std::pair(shownRow, control ? lastCol : neighbour(cols, state.col, 1));
    case Qt::Key_PageUp:
        return std::pair(neighbour(rows, state.row, -page), shownCol);
    case Qt::Key_PageDown:
        return std::pair(neighbour(rows, state.row, page), shownCol);
    case Qt::Key_Home:
        return std::pair(control ? firstRow : shownRow, firstCol);
    case Qt::Key_End:
        return std::pair(control ? lastRow : shownRow, lastCol);
    default:
        return std::nullopt;
    }
}

} // namespace controls
