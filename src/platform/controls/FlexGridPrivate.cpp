// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/FlexGridPrivate.h"

#include "platform/basic/RunTimeError.h"

#include <QAccessible>
#include <QCoreApplication>
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

void FlexGrid::Private::clampCurrentCell()
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
    const QSize maximum = grid_.maximumViewportSize();
    QScrollBar *across = grid_.horizontalScrollBar();
    QScrollBar *down = grid_.verticalScrollBar();
    reserveContent();
    state.cols.spread(0);
    bool showDown = state.rows.total() > maximum.height();
    const int barWidth = down->sizeHint().width();
    const bool showAcross = state.cols.total() > maximum.width() - (showDown ? barWidth : 0);
    showDown = showDown || (showAcross && state.rows.total() > maximum.height() - across->sizeHint().height());
    viewSize_ = {maximum.width() - (showDown ? barWidth : 0), maximum.height() - (showAcross ? across->sizeHint().height() : 0)};
    state.cols.spread(viewSize_.width());
    layOutBar(down, state.rows, viewSize_.height());
    layOutBar(across, state.cols, viewSize_.width());
    layoutPending_ = false;
    layingOut_ = false;
}

void FlexGrid::Private::measure(int row, int col)
{
    if (!state.cols.stretched().contains(col)) {
        return;
    }
    content_.resize(std::max(content_.size(), static_cast<std::size_t>(state.cols.count())));
    Content &content = content_[static_cast<std::size_t>(col)];
    const QString &text = state.store.at(row, col).text;
    int width = 0;
    if (row < state.rows.fixed()) {
        width = headingWidth(text, grid_.font(), state.rows.size(row));
    } else {
        if (!estimate_) {
            estimate_.emplace(grid_.font());
        }
        const double estimate = estimate_->width(text);
        if (estimate <= content.estimate) {
            return;
        }
        content.estimate = estimate;
        width = grid_.fontMetrics().horizontalAdvance(text);
    }
    if (width > content.width) {
        content.width = width;
        layoutLater();
    }
}

void FlexGrid::Private::measureAll()
{
    forgetTexts();
    for (int row = 0; row < state.rows.count(); ++row) {
        for (const int col : state.cols.stretched()) {
            if (col < state.cols.count()) {
                measure(row, col);
            }
        }
    }
}

/// A number is never cut; a long text gives way.
void FlexGrid::Private::reserveContent()
{
    constexpr int mostText = 92;
    for (const int col : state.cols.stretched()) {
        if (col < state.cols.count()) {
            const auto index = static_cast<std::size_t>(col);
            const int wanted = index < content_.size() ? content_[index].width : 0;
            const bool isNumber = state.colAlignments[index] == CellAlignment::Right;
            state.cols.setContent(col, wanted, isNumber ? wanted : std::min(wanted, mostText));
        }
    }
}

void FlexGrid::Private::layOutBar(QScrollBar *bar, GridAxis &axis, int extent)
{
    const int last = axis.lastPosition(extent);
    const int position = std::min(axis.position(axis.first()), last);
    bar->setPageStep(axis.page(extent));
    bar->setSingleStep(1);
    bar->setRange(0, last);
    bar->setValue(position);
    axis.setFirst(axis.lineAt(position));
}

void FlexGrid::Private::setFirst(const GridAxis &axis, QScrollBar *bar, int line)
{
    layOut();
    bar->setValue(axis.position(line));
}

void FlexGrid::Private::reveal(const GridAxis &axis, QScrollBar *bar, int line, int extent)
{
    if (line < axis.pinned() || axis.isHidden(line) || axis.isFullyShown(line, extent)) {
        return;
    }
    if (line < axis.first()) {
        setFirst(axis, bar, line);
        return;
    }
    // Scroll until the line's far edge is visible, but never past the line itself.
    while (!axis.isFullyShown(line, extent) && bar->value() < bar->maximum()) {
        bar->setValue(bar->value() + 1);
    }
}

bool FlexGrid::Private::scrolledTo(int horizontal, int vertical)
{
    // A layout moves the bars too: positions among the visible lines change with the lines hidden above.
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

} // namespace controls
