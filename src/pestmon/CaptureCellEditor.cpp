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

void CaptureCellEditor::open()
{
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

bool CaptureCellEditor::keyPress(const QKeyEvent &key)
{
    const int step = key.key() == Qt::Key_Down ? 1 : key.key() == Qt::Key_Up ? -1 : 0;
    const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    const bool tab = key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab;
    if (!enter && !tab && step == 0) {
        return false;
    }
    const int target = BoxRow + step;
    if (step != 0 && target >= capture::TotalRow && target < grid_.Rows()) {
        grid_.setRow(target);
        grid_.showCell(target, BoxCol);
    }
    grid_.setFocus();
    if (open_) {
        // The value could not be stored: the next Enter tries again.
        box_.setFocus();
        return true;
    }
    // Tab continues from the grid, to the field before or after it.
    return !tab;
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
    if (!store_(BoxRow, BoxCol, box_.text())) {
        grid_.setCell(BoxRow, BoxCol);
        return false;
    }
    close();
    grid_.setCell(row, col);
    return true;
}

} // namespace pestmon
