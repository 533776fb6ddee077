// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the capture grid that opens the box over a cell and saves what is typed into it.
#include "common/grid/CellEditor.h"
#include "pestmon/CaptureGrid.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/Dialogs.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Database.h"
#include "ui_frmPestMon2.h"

#include <QKeyEvent>
#include <QScopedValueRollback>

namespace
{

/// A key that types something. Control and Alt together are AltGr; either alone belongs to a letter of a button or a command.
bool isCharacter(const QKeyEvent &key)
{
    constexpr Qt::KeyboardModifiers altGr = Qt::ControlModifier | Qt::AltModifier;
    const Qt::KeyboardModifiers held = key.modifiers() & (altGr | Qt::MetaModifier);
    return (!held || held == altGr) && !key.text().isEmpty() && key.text().front().isPrint();
}

/// Not when another window or a menu of its own was in front meanwhile.
bool movesFocus(const QEvent &event)
{
    const Qt::FocusReason reason = static_cast<const QFocusEvent &>(event).reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
}

} // namespace

bool CaptureGrid::returnToOpenBox()
{
    if (boxOpen_) {
        ui_.grdPest->setCell(BoxRow, BoxCol);
        ui_.txtG1->setFocus();
    }
    return boxOpen_;
}

void CaptureGrid::click(int row, int col)
{
    if (returnToOpenBox()) {
        return;
    }
    if (session().CurrentPMTransID == 0) {
        host().dialogs().message(QStringLiteral("Enter all information to save the transaction"));
        return;
    }
    if (col > lastPestCol() || col < capture::FirstValueColumn) {
        return;
    }
    if (row == capture::TotalRow || isCount()) {
        openBox();
    } else {
        toggle(row, col);
    }
}

void CaptureGrid::keyDown(QKeyEvent *event)
{
    controls::FlexGrid &grid = *ui_.grdPest;
    const int row = grid.Row();
    const int col = grid.Col();
    const bool toggles = event->key() == Qt::Key_F2;
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool character = isCharacter(*event);
    const bool opens = (enter || character) && (row == capture::TotalRow || isCount());
    if (!toggles && !opens) {
        return;
    }
    event->accept();
    if (returnToOpenBox()) {
        return;
    }
    if (toggles) {
        runOrReport(QStringLiteral("The cell could not be changed"), [&] { click(row, col); });
        // A toggle leaves the current cell in the point column; whoever works by keys wants to go on from where he was.
        grid.setCell(row, col);
        return;
    }
    openBox();
    if (boxOpen_ && character) {
        Send_Keys(event->text(), true);
    }
}

void CaptureGrid::openBox()
{
    controls::FlexGrid &grid = *ui_.grdPest;
    const auto column = capture::pestColumn(grid.Col(), NoOfPests);
    if (!column) {
        return;
    }
    if (grid.Row() > capture::TotalRow && keyIn(grid.Row(), column->pest) == 0) {
        host().showFailure(QStringLiteral("There is no monitoring point to fill in here"));
        return;
    }
    BoxRow = grid.Row();
    BoxCol = grid.Col();
    grid.showCell(BoxRow, BoxCol);
    ui_.txtG1->setText(grid.Text());
    OldValue = basic::toInteger16(basic::Val(ui_.txtG1->text()));
    boxOpen_ = true;
    placeBox();
    ui_.txtG1->show();
    ui_.txtG1->raise();
    ui_.txtG1->setFocus();
    ui_.txtG1->selectAll();
}

void CaptureGrid::placeBox()
{
    if (!boxOpen_) {
        return;
    }
    controls::FlexGrid &grid = *ui_.grdPest;
    const QRect cell = grid.cellRect(BoxRow, BoxCol);
    constexpr int inset = 2;
    if (cell.isEmpty()) {
        ui_.txtG1->move(-ui_.txtG1->width(), -ui_.txtG1->height());
        return;
    }
    ui_.txtG1->setGeometry(cell.adjusted(0, 0, -inset, -inset));
}

void CaptureGrid::closeBox()
{
    boxOpen_ = false;
    ui_.txtG1->setSelection(0, 0);
    // Hidden with the focus, the box would hand it to whatever comes next in the window. The window may not be in front again
    // yet after a question.
    if (ui_.txtG1->window()->focusWidget() == ui_.txtG1) {
        ui_.grdPest->setFocus();
    }
    ui_.txtG1->hide();
}

bool CaptureGrid::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != ui_.txtG1) {
        return PestMonPage::eventFilter(watched, event);
    }
    if (event->type() == QEvent::FocusIn && movesFocus(*event)) {
        ui_.txtG1->selectAll();
    }
    if (event->type() == QEvent::FocusOut && boxOpen_ && movesFocus(*event)) {
        leaveBox();
    }
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    controls::FlexGrid &grid = *ui_.grdPest;
    const int key = static_cast<QKeyEvent *>(event)->key();
    const int step = key == Qt::Key_Down ? 1 : key == Qt::Key_Up ? -1 : 0;
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    const bool tab = key == Qt::Key_Tab || key == Qt::Key_Backtab;
    if (!enter && !tab && step == 0) {
        return false;
    }
    const int target = BoxRow + step;
    if (step != 0 && target >= capture::TotalRow && target < grid.Rows()) {
        grid.setRow(target);
        grid.showCell(target, BoxCol);
    }
    grid.setFocus();
    if (boxOpen_) {
        // What it holds could not be saved: the next Enter tries again.
        ui_.txtG1->setFocus();
        return true;
    }
    // A tab goes on from the grid, to the field before it or after it.
    return !tab;
}

bool CaptureGrid::leaveBox()
{
    if (!boxOpen_ || leaving_) {
        return !boxOpen_;
    }
    const QScopedValueRollback guard(leaving_, true);
    controls::FlexGrid &grid = *ui_.grdPest;
    const int row = grid.Row();
    const int col = grid.Col();
    if (col > lastPestCol() || col < capture::FirstValueColumn) {
        return false;
    }
    bool mayClose = false;
    const QString name = cellName(BoxRow, *capture::pestColumn(BoxCol, NoOfPests));
    runOrReport(QStringLiteral("%1 could not be saved").arg(name), [&] {
        if (BoxRow == capture::TotalRow) {
            saveTypedTotal();
            mayClose = true;
        } else {
            mayClose = savePoint();
        }
    });
    if (mayClose) {
        closeBox();
        grid.setCell(row, col);
    } else {
        grid.setCell(BoxRow, BoxCol);
    }
    return mayClose;
}

void CaptureGrid::saveTypedTotal()
{
    const capture::PestColumn column = *capture::pestColumn(BoxCol, NoOfPests);
    const capture::CellPicture typed = capture::typedTotal(ui_.txtG1->text());
    dao::CommitScope scope(*session().dbPest);
    saveTotal(column, typed);
    scope.commit();
}

bool CaptureGrid::savePoint()
{
    const capture::PestColumn column = *capture::pestColumn(BoxCol, NoOfPests);
    const capture::CellPicture typed = capture::typedPoint(ui_.txtG1->text());
    const std::int16_t total = capture::runningTotal(numberIn(capture::TotalRow, BoxCol), OldValue, typed.value);
    dao::CommitScope scope(*session().dbPest);
    paint(BoxRow, BoxCol, typed);
    // From here on the total counts the new value; should the point fail, a second try starts from it.
    OldValue = typed.value;
    const bool totalSaved = saveTotal(column, capture::changedTotal(total));
    session().CurrentCTargetID = PestIDs[static_cast<std::size_t>(column.pest - 1)];
    if (storePoint(column, BoxRow, typed.value) == clsPestMONNew::Failed) {
        showStoreFailure(QStringLiteral("%1 could not be saved").arg(cellName(BoxRow, column)));
        return false;
    }
    scope.commit();
    if (totalSaved) {
        host().showStatus(QStringLiteral("%1 = %2 saved").arg(cellName(BoxRow, column)).arg(typed.value));
    }
    return true;
}
