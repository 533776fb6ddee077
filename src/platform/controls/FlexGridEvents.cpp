// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/FlexGridPrivate.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

namespace controls
{

QSize FlexGrid::sizeHint() const
{
    return {480, 320};
}

QSize FlexGrid::minimumSizeHint() const
{
    return {160, 96};
}

bool FlexGrid::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest) {
        d_->layOut();
    }
    return QAbstractScrollArea::event(event);
}

void FlexGrid::paintEvent(QPaintEvent *)
{
    d_->painted();
    d_->layOut();
    QPainter painter(viewport());
    const GridView view = d_->view();
    GridPainter(d_->state, view).paint(painter);
}

void FlexGrid::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    d_->layoutLater();
}

void FlexGrid::scrollContentsBy(int, int)
{
    if (d_->scrolledTo(horizontalScrollBar()->value(), verticalScrollBar()->value())) {
        Q_EMIT Scroll();
    }
}

void FlexGrid::mousePressEvent(QMouseEvent *event)
{
    const auto cell = event->button() == Qt::LeftButton ? cellAt(event->pos()) : std::nullopt;
    d_->pressed = cell && d_->isSelectable(cell->first, cell->second) ? cell : std::nullopt;
    const auto pressed = d_->pressed;
    if (pressed) {
        setCell(pressed->first, pressed->second);
    }
    if (event->button() == Qt::LeftButton) {
        setFocus(Qt::MouseFocusReason);
    }
    if (pressed && d_->isSelectable(pressed->first, pressed->second)) {
        // Whoever lost the focus may have filled the grid anew and moved its current cell.
        setCell(pressed->first, pressed->second);
        showCell(pressed->first, pressed->second);
        d_->announceCurrent();
        Q_EMIT Click(pressed->first, pressed->second);
    }
}

void FlexGrid::mouseDoubleClickEvent(QMouseEvent *)
{
    if (const auto pressed = d_->pressed; pressed && d_->isSelectable(pressed->first, pressed->second)) {
        Q_EMIT DblClick(pressed->first, pressed->second);
    }
}

void FlexGrid::keyPressEvent(QKeyEvent *event)
{
    d_->layOut();
    if (const auto target = d_->keyTarget(*event)) {
        event->accept();
        const auto [row, col] = *target;
        if (row != Row() || col != Col()) {
            setCell(row, col);
            showCell(row, col);
            d_->announceCurrent();
            Q_EMIT cellMovedByKey(row, col);
        }
        return;
    }
    event->ignore();
    Q_EMIT KeyDown(event);
    if (event->isAccepted() || !d_->isSelectable(Row(), Col())) {
        return;
    }
    const bool clicks = (event->key() == Qt::Key_F2 && d_->keyClicks != KeyClick::None)
        || (event->key() == Qt::Key_Space && d_->keyClicks == KeyClick::SpaceAndF2);
    if (clicks) {
        event->accept();
        showCell(Row(), Col());
        Q_EMIT Click(Row(), Col());
    }
}

void FlexGrid::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    d_->repaintLater();
    d_->announceCurrent();
    Q_EMIT GotFocus();
}

void FlexGrid::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    d_->repaintLater();
    Q_EMIT LostFocus();
}

bool FlexGrid::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip) {
        return QAbstractScrollArea::viewportEvent(event);
    }
    const auto *help = static_cast<QHelpEvent *>(event);
    const auto cell = cellAt(help->pos());
    QString tip;
    if (cell && d_->state.isMarked(cell->first, cell->second)) {
        tip = cellDescription(cell->first, cell->second);
    } else if (cell) {
        const GridView view = d_->view();
        tip =
            GridPainter(d_->state, view).isElided(cell->first, cell->second) ? TextMatrix(cell->first, cell->second) : QString();
    }
    if (tip.isEmpty()) {
        QToolTip::hideText();
        event->ignore();
    } else {
        QToolTip::showText(help->globalPos(), tip, viewport(), cellRect(cell->first, cell->second));
    }
    return true;
}

void FlexGrid::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange || event->type() == QEvent::PaletteChange
        || event->type() == QEvent::EnabledChange) {
        d_->layoutLater();
    }
}

} // namespace controls
