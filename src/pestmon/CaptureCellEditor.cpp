// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/CaptureCellEditor.h"

#include "pestmon/CaptureCells.h"
#include "platform/controls/FlexGrid.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>

namespace pestmon
{

namespace
{

/// False when another window or a menu of the box comes to the front.
bool movesFocus(const QEvent &event)
{
    const Qt::FocusReason reason = static_cast<const QFocusEvent &>(event).reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
}

} // namespace

bool isRedoKey(const QKeyEvent &key)
{
    return key.matches(QKeySequence::Redo) || (key.key() == Qt::Key_Y && key.modifiers() == Qt::ControlModifier);
}

CaptureCellEditor::CaptureCellEditor(controls::FlexGrid &grid, QLineEdit &box, Store store)
    : grid_(grid), box_(box), store_(std::move(store))
{
    box_.setParent(grid_.viewport());
    box_.installEventFilter(this);
    connect(&grid_, &controls::FlexGrid::Scroll, this, &CaptureCellEditor::place);
}

bool CaptureCellEditor::resume()
{
    if (open_) {
        grid_.setCell(BoxRow, BoxCol);
        box_.setFocus();
    }
    return open_;
}

void CaptureCellEditor::open(OpenedBy by)
{
    openedBy_ = by;
    BoxRow = grid_.Row();
    BoxCol = grid_.Col();
    grid_.showCell(BoxRow, BoxCol);
    box_.setText(grid_.Text());
    open_ = true;
    place();
    box_.show();
    box_.raise();
    box_.setFocus();
    box_.selectAll();
}

void CaptureCellEditor::place()
{
    if (!open_) {
        return;
    }
    const QRect cell = grid_.cellRect(BoxRow, BoxCol);
    constexpr int inset = 2;
    if (cell.isEmpty()) {
        box_.move(-box_.width(), -box_.height());
        return;
    }
    box_.setGeometry(cell.adjusted(0, 0, -inset, -inset));
}

void CaptureCellEditor::close()
{
    open_ = false;
    box_.setSelection(0, 0);
    // Hidden with the focus, the box would pass it to the next widget of the window, which may still be inactive after a
    // question.
    if (box_.window()->focusWidget() == &box_) {
        grid_.setFocus();
    }
    box_.hide();
}

bool CaptureCellEditor::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && movesFocus(*event)) {
        box_.selectAll();
    } else if (event->type() == QEvent::FocusOut && open_ && movesFocus(*event)) {
        leave();
    } else if (event->type() == QEvent::KeyPress) {
        return keyPress(static_cast<QKeyEvent &>(*event));
    }
    return QObject::eventFilter(watched, event);
}

/// An untouched box has all its text selected, so both ends count.
std::optional<capture::Direction> CaptureCellEditor::moveFor(const QKeyEvent &key) const
{
    const bool all = !box_.text().isEmpty() && box_.selectedText() == box_.text();
    const bool atStart = all || (box_.cursorPosition() == 0 && !box_.hasSelectedText());
    const bool atEnd = all || (box_.cursorPosition() == box_.text().size() && !box_.hasSelectedText());
    const bool plain = !(key.modifiers() & ~Qt::KeypadModifier);
    const bool padPlus = key.key() == Qt::Key_Plus && (key.modifiers() & Qt::KeypadModifier);
    if (key.key() == Qt::Key_Tab || padPlus || (key.key() == Qt::Key_Right && plain && atEnd)) {
        return capture::Direction::Next;
    }
    if (key.key() == Qt::Key_Backtab || (key.key() == Qt::Key_Left && plain && atStart)) {
        return capture::Direction::Previous;
    }
    return std::nullopt;
}

/// Stores and gives the focus to the grid, in the cell `rows` below.
void CaptureCellEditor::leaveBy(int rows)
{
    const int target = BoxRow + rows;
    if (rows != 0 && target >= capture::TotalRow && target < grid_.Rows()) {
        grid_.setRow(target);
        grid_.showCell(target, BoxCol);
    }
    grid_.setFocus();
    if (open_) {
        // The value could not be stored: the next key tries again.
        box_.setFocus();
    }
}

bool CaptureCellEditor::historyKey(const QKeyEvent &key)
{
    const bool undoes = key.matches(QKeySequence::Undo);
    if (box_.isModified() || (!undoes && !isRedoKey(key))) {
        return false;
    }
    close();
    undoes ? Q_EMIT undoRequested() : Q_EMIT redoRequested();
    return true;
}

bool CaptureCellEditor::keyPress(const QKeyEvent &key)
{
    if (const auto direction = moveFor(key)) {
        leaveBy(0);
        if (!open_) {
            Q_EMIT moveRequested(*direction);
        }
        return true;
    }
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        leaveBy(0);
        return true;
    case Qt::Key_Down:
        leaveBy(1);
        return true;
    case Qt::Key_Up:
        leaveBy(-1);
        return true;
    case Qt::Key_Escape:
        close();
        Q_EMIT cancelled(BoxRow, BoxCol);
        return true;
    default:
        return historyKey(key);
    }
}

bool CaptureCellEditor::leave()
{
    if (!open_ || leaving_) {
        return !open_;
    }
    const QScopedValueRollback guard(leaving_, true);
    const int row = grid_.Row();
    const int col = grid_.Col();
    if (col > grid_.Cols() || col < capture::FirstValueColumn) {
        return false;
    }
    const bool untouched = openedBy_ == OpenedBy::Move && !box_.isModified();
    if (!untouched && !store_(BoxRow, BoxCol, box_.text())) {
        grid_.setCell(BoxRow, BoxCol);
        return false;
    }
    close();
    grid_.setCell(row, col);
    return true;
}

} // namespace pestmon
