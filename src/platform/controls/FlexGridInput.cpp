// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/FlexGridInput.h"

#include "platform/controls/FlexGridPrivate.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QToolTip>

namespace controls
{

bool FlexGridInput::isSelectable(int row, int col) const
{
    return row < grid_.Rows() && col < grid_.Cols() && !d_.state.isFixed(row, col);
}

void FlexGridInput::mousePress(const QMouseEvent &event)
{
    const auto cell = event.button() == Qt::LeftButton ? grid_.cellAt(event.pos()) : std::nullopt;
    pressed_ = cell && isSelectable(cell->first, cell->second) ? cell : std::nullopt;
    if (cell && cell->first < grid_.FixedRows() && cell->second >= grid_.FixedCols()) {
        grid_.setFocus(Qt::MouseFocusReason);
        Q_EMIT grid_.HeaderClick(cell->second);
        return;
    }
    if (pressed_ && mouseSelects_ && (event.modifiers() & Qt::ShiftModifier)) {
        grid_.setFocus(Qt::MouseFocusReason);
        moveTo(pressed_->first, pressed_->second, true);
        return;
    }
    const auto pressed = pressed_;
    if (pressed) {
        d_.state.anchor.reset();
        grid_.setCell(pressed->first, pressed->second);
    }
    if (event.button() == Qt::LeftButton) {
        grid_.setFocus(Qt::MouseFocusReason);
    }
    if (pressed && isSelectable(pressed->first, pressed->second)) {
        // The widget that lost the focus may have refilled the grid and moved its current cell.
        grid_.setCell(pressed->first, pressed->second);
        grid_.showCell(pressed->first, pressed->second);
        d_.announceCurrent();
        Q_EMIT grid_.Click(pressed->first, pressed->second);
    }
}

void FlexGridInput::mouseMove(const QMouseEvent &event)
{
    const auto cell = mouseSelects_ && pressed_ && (event.buttons() & Qt::LeftButton) ? grid_.cellAt(event.pos()) : std::nullopt;
    if (cell && isSelectable(cell->first, cell->second) && (cell->first != grid_.Row() || cell->second != grid_.Col())) {
        moveTo(cell->first, cell->second, true);
    }
}

void FlexGridInput::doubleClick()
{
    if (const auto pressed = pressed_; pressed && isSelectable(pressed->first, pressed->second)) {
        Q_EMIT grid_.DblClick(pressed->first, pressed->second);
    }
}

void FlexGridInput::moveTo(int row, int col, bool extends)
{
    const auto anchor = extends ? d_.state.anchor.value_or(std::pair(grid_.Row(), grid_.Col())) : d_.state.anchor;
    const bool moves = row != grid_.Row() || col != grid_.Col();
    grid_.setCell(row, col);
    grid_.showCell(row, col);
    if (moves) {
        d_.announceCurrent();
        Q_EMIT grid_.cellMoved(row, col);
    }
    d_.state.anchor = extends ? anchor : std::nullopt;
    d_.repaintLater();
}

bool FlexGridInput::copies(const QKeyEvent &event) const
{
    const bool all = event.key() == Qt::Key_C && event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    if (all || event.matches(QKeySequence::Copy)) {
        grid_.copy(all ? FlexGrid::Copy::All : FlexGrid::Copy::Selection);
        return true;
    }
    return false;
}

void FlexGridInput::contextMenu(const QContextMenuEvent &event)
{
    grid_.setFocus(Qt::MouseFocusReason);
    QPoint position = event.globalPos();
    if (event.reason() == QContextMenuEvent::Keyboard) {
        position = grid_.viewport()->mapToGlobal(grid_.cellRect(grid_.Row(), grid_.Col()).center());
    } else if (const auto cell = grid_.cellAt(event.pos()); cell && isSelectable(cell->first, cell->second)) {
        moveTo(cell->first, cell->second, false);
    }
    QMenu menu(&grid_);
    menu.addActions(grid_.actions());
    menu.addSeparator();
    menu.addAction(FlexGrid::tr("Copy\tCtrl+C"), &grid_, [this] { grid_.copy(FlexGrid::Copy::Selection); });
    menu.addAction(FlexGrid::tr("Copy all with headings\tCtrl+Shift+C"), &grid_, [this] { grid_.copy(FlexGrid::Copy::All); });
    menu.exec(position);
}

void FlexGridInput::keyPress(QKeyEvent &event)
{
    d_.layOut();
    if (const auto target = keyTarget(event)) {
        event.accept();
        moveTo(target->first, target->second, event.modifiers() & Qt::ShiftModifier);
        return;
    }
    if (copies(event)) {
        event.accept();
        return;
    }
    event.ignore();
    Q_EMIT grid_.KeyDown(&event);
    if (!event.isAccepted() && isClick(event) && isSelectable(grid_.Row(), grid_.Col())) {
        event.accept();
        grid_.showCell(grid_.Row(), grid_.Col());
        Q_EMIT grid_.Click(grid_.Row(), grid_.Col());
    }
}

bool FlexGridInput::isClick(const QKeyEvent &event) const
{
    return (event.key() == Qt::Key_F2 && keyClicks_ != FlexGrid::KeyClick::None)
        || (event.key() == Qt::Key_Space && keyClicks_ == FlexGrid::KeyClick::SpaceAndF2);
}

int FlexGridInput::neighbour(const GridAxis &axis, int line, int steps) const
{
    // The position of a hidden line is that of the next visible one, which is the first step.
    const bool fromHidden = line < axis.count() && (axis.isHidden(line) || line < axis.fixed());
    return axis.selectableAt(axis.selectableIndex(line) + (fromHidden && steps > 0 ? steps - 1 : steps));
}

std::optional<std::pair<int, int>> FlexGridInput::keyTarget(const QKeyEvent &event) const
{
    const auto &rows = d_.state.rows;
    const auto &cols = d_.state.cols;
    if ((event.modifiers() & (Qt::AltModifier | Qt::MetaModifier)) || rows.selectableCount() == 0
        || cols.selectableCount() == 0) {
        return std::nullopt;
    }
    const bool control = event.modifiers() & Qt::ControlModifier;
    const int page = rows.page(d_.viewSize().height());
    const int firstCol = cols.selectableAt(0);
    const int lastCol = cols.selectableAt(cols.selectableCount() - 1);
    const int firstRow = rows.selectableAt(0);
    const int lastRow = rows.selectableAt(rows.selectableCount() - 1);
    const int shownRow = neighbour(rows, d_.state.row, 0);
    const int shownCol = neighbour(cols, d_.state.col, 0);
    switch (event.key()) {
    case Qt::Key_Up:
        return std::pair(control ? firstRow : neighbour(rows, d_.state.row, -1), shownCol);
    case Qt::Key_Down:
        return std::pair(control ? lastRow : neighbour(rows, d_.state.row, 1), shownCol);
    case Qt::Key_Left:
        return std::pair(shownRow, control ? firstCol : neighbour(cols, d_.state.col, -1));
    case Qt::Key_Right:
        return std::pair(shownRow, control ? lastCol : neighbour(cols, d_.state.col, 1));
    case Qt::Key_PageUp:
        return std::pair(neighbour(rows, d_.state.row, -page), shownCol);
    case Qt::Key_PageDown:
        return std::pair(neighbour(rows, d_.state.row, page), shownCol);
    case Qt::Key_Home:
        return std::pair(control ? firstRow : shownRow, firstCol);
    case Qt::Key_End:
        return std::pair(control ? lastRow : shownRow, lastCol);
    default:
        return std::nullopt;
    }
}

void FlexGridInput::toolTip(QHelpEvent &event) const
{
    const auto cell = grid_.cellAt(event.pos());
    QString tip;
    if (cell && d_.state.isColoured(cell->first, cell->second)) {
        tip = grid_.cellDescription(cell->first, cell->second);
    } else if (cell) {
        const GridView view = d_.view();
        const bool elided = GridPainter(d_.state, view).isElided(cell->first, cell->second);
        tip = elided ? grid_.TextMatrix(cell->first, cell->second) : QString();
    }
    if (tip.isEmpty()) {
        QToolTip::hideText();
        event.ignore();
    } else {
        QToolTip::showText(event.globalPos(), tip, grid_.viewport(), grid_.cellRect(cell->first, cell->second));
    }
}

} // namespace controls
