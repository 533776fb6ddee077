// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/CaptureGrid.h"

#include "common/grid/CellEditor.h"
#include "platform/controls/BusyPointer.h"
#include "platform/controls/Dialogs.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Database.h"
#include "screens/GridActions.h"
#include "store/clsPestMONNew.h"
#include "ui_frmPestMon2.h"

#include <QAction>
#include <QKeyEvent>

namespace pestmon
{

namespace cellColour = controls::cellColour;

namespace
{

/// A key that types a character. Control and Alt together are AltGr; either alone is a shortcut.
bool isCharacter(const QKeyEvent &key)
{
    constexpr Qt::KeyboardModifiers altGr = Qt::ControlModifier | Qt::AltModifier;
    const Qt::KeyboardModifiers held = key.modifiers() & (altGr | Qt::MetaModifier);
    return (!held || held == altGr) && !key.text().isEmpty() && key.text().front().isPrint();
}

} // namespace

CaptureGrid::CaptureGrid(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui)
    : PestMonPage(screen, host, ui), table_(*ui.grdPest, host),
      editor_(*ui.grdPest, *ui.txtG1, [this](int row, int col, const QString &typed) { return store(row, col, typed); })
{
    controls::FlexGrid &grid = *ui_.grdPest;
    on(&grid, &controls::FlexGrid::Click,
       [this](int row, int col) { runOrReport(QStringLiteral("The cell could not be changed"), [&] { click(row, col); }); });
    on(&grid, &controls::FlexGrid::KeyDown, [this](QKeyEvent *event) { keyDown(event); });
    undoAction_ = addGridAction(grid, QStringLiteral("Undo"), {QKeySequence::Undo});
    redoAction_ = addGridAction(grid, QStringLiteral("Redo"), {Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z});
    on(undoAction_, &QAction::triggered, [this] { undo(); });
    on(redoAction_, &QAction::triggered, [this] { redo(); });
    on(&editor_, &CaptureCellEditor::moveRequested, [this](capture::Direction direction) { move(direction); });
    on(&editor_, &CaptureCellEditor::undoRequested, [this] { undo(); });
    on(&editor_, &CaptureCellEditor::redoRequested, [this] { redo(); });
    on(&editor_, &CaptureCellEditor::cancelled, [this](int row, int col) { cancelled(row, col); });
}

void CaptureGrid::clear()
{
    editor_.close();
    forgetChanges();
    table_.clear();
}

void CaptureGrid::Fill_Capture()
{
    const controls::BusyPointer busy;
    editor_.close();
    forgetChanges();
    table_.fill();
}

void CaptureGrid::click(int row, int col)
{
    if (editor_.resume()) {
        return;
    }
    if (session().CurrentPMTransID == 0) {
        host().dialogs().message(QStringLiteral("Enter all information to save the transaction"));
        return;
    }
    if (col > lastPestCol() || col < capture::FirstValueColumn) {
        return;
    }
    if (row == capture::TotalRow || table_.isCount()) {
        openEditor(CaptureCellEditor::OpenedBy::User);
    } else {
        toggle(row, col);
    }
}

void CaptureGrid::keyDown(QKeyEvent *event)
{
    controls::FlexGrid &grid = *ui_.grdPest;
    const int row = grid.Row();
    const int col = grid.Col();
    const bool editable = row == capture::TotalRow || table_.isCount();
    const bool toggles = event->key() == Qt::Key_F2 || (event->key() == Qt::Key_Space && !editable);
    const bool empties = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool character = isCharacter(*event);
    if (!toggles && !(editable && (empties || enter || character))) {
        return;
    }
    event->accept();
    if (editor_.resume()) {
        return;
    }
    if (toggles) {
        runOrReport(QStringLiteral("The cell could not be changed"), [&] { click(row, col); });
        // A toggle leaves the current cell in the point column; keys continue from the toggled cell.
        grid.setCell(row, col);
    } else if (event->key() == Qt::Key_Plus && (event->modifiers() & Qt::KeypadModifier)) {
        move(capture::Direction::Next);
    } else {
        openEditor(CaptureCellEditor::OpenedBy::User);
        if (editor_.isOpen() && empties) {
            ui_.txtG1->clear();
        } else if (editor_.isOpen() && character) {
            Send_Keys(event->text(), true);
        }
    }
}

void CaptureGrid::openEditor(CaptureCellEditor::OpenedBy by)
{
    const controls::FlexGrid &grid = *ui_.grdPest;
    const auto column = table_.column(grid.Col());
    if (!column) {
        return;
    }
    if (grid.Row() > capture::TotalRow && table_.key(grid.Row(), column->pest) == 0) {
        host().showFailure(QStringLiteral("There is no monitoring point to fill in here"));
        return;
    }
    OldValue = table_.number(grid.Row(), grid.Col());
    editor_.open(by);
}

void CaptureGrid::move(capture::Direction direction)
{
    controls::FlexGrid &grid = *ui_.grdPest;
    const auto next = capture::neighbourCell({grid.Row(), grid.Col()}, table_.pests(), table_.lastPointRow(), direction);
    if (!next) {
        return;
    }
    grid.setCell(next->row, next->col);
    grid.showCell(next->row, next->col);
    const int pest = table_.column(next->col)->pest;
    if (next->row == capture::TotalRow || (table_.isCount() && table_.key(next->row, pest) != 0)) {
        openEditor(CaptureCellEditor::OpenedBy::Move);
    }
}

CaptureChange CaptureGrid::changeTo(int row, int col, const capture::CellDisplay &cell, const capture::CellDisplay &total) const
{
    return {row, col, table_.shown(row, col), cell, table_.shown(capture::TotalRow, col), total};
}

CaptureChange CaptureGrid::typedChange(int row, int col, const QString &typed) const
{
    if (row == capture::TotalRow) {
        const capture::CellDisplay total = capture::typedTotal(typed);
        return changeTo(row, col, total, total);
    }
    const capture::CellDisplay count = capture::typedPoint(typed);
    const std::int16_t total = capture::runningTotal(totalBase(col), OldValue, count.value);
    return changeTo(row, col, count, capture::changedTotal(total));
}

std::int16_t CaptureGrid::totalBase(int col) const
{
    return unsavedTotals_.value(col, table_.number(capture::TotalRow, col));
}

bool CaptureGrid::store(int row, int col, const QString &typed)
{
    std::optional<CaptureChange> change;
    if (!runOrReport(notSaved(row, col), [&] { change = typedChange(row, col, typed); })) {
        return false;
    }
    if (perform(*change) || row == capture::TotalRow) {
        return true;
    }
    table_.paint(row, col, change->after);
    if (table_.number(capture::TotalRow, col) == change->totalAfter.value) {
        // The stored total includes the new value already; a second try must not add it again.
        OldValue = change->after.value;
    }
    return false;
}

/// After a failed write the cell shows the typed value under its editor.
void CaptureGrid::cancelled(int row, int col)
{
    const CaptureChange unchanged = changeTo(row, col, table_.shown(row, col), table_.shown(capture::TotalRow, col));
    showStored(unchanged, {});
}

void CaptureGrid::toggle(int row, int col)
{
    const auto colour = ui_.grdPest->CellBackColor(row, col);
    if (!table_.column(col) || (colour != cellColour::White && colour != cellColour::Red)) {
        return;
    }
    const bool yes = colour == cellColour::White;
    const std::int16_t total = totalBase(col);
    // A No at a total of 0 leaves the total alone.
    const bool counts = yes || total >= 1;
    const capture::CellDisplay newTotal = counts ? capture::changedTotal(capture::runningTotal(total, yes ? 0 : 1, yes ? 1 : 0))
                                                 : table_.shown(capture::TotalRow, col);
    perform(changeTo(row, col, capture::answer(yes), newTotal), counts ? Totals::Save : Totals::Skip);
    ui_.grdPest->setCol(capture::PointColumn);
}

bool CaptureGrid::perform(const CaptureChange &change, Totals totals)
{
    const Written written = write(change, totals);
    if (written.all()) {
        host().showStatus(QStringLiteral("%1 = %2 saved").arg(cellName(change.row, change.col), valueText(change)));
        history_.add(change);
    } else if (written.cell != written.total) {
        // The total is no longer the one that earlier changes led to.
        history_.clear();
    }
    if (written.total) {
        unsavedTotals_.remove(change.col);
    } else if (written.cell) {
        unsavedTotals_.insert(change.col, change.totalAfter.value);
    }
    updateActions();
    return written.cell;
}

CaptureGrid::Written CaptureGrid::write(const CaptureChange &change, Totals totals)
{
    Written written{false, totals == Totals::Skip};
    const bool committed = runOrReport(notSaved(change.row, change.col), [&] {
        dao::CommitScope scope(*session().dbPest);
        if (totals == Totals::Save) {
            written.total = writeTotal(change);
        }
        written.cell = change.row == capture::TotalRow ? written.total : writePoint(change);
        scope.commit();
    });
    if (!committed) {
        written = {};
    }
    if (written.total) {
        table_.paint(capture::TotalRow, change.col, change.totalAfter);
    }
    if (written.cell) {
        table_.paint(change.row, change.col, change.after);
    }
    if (!written.all()) {
        showStored(change, written);
    }
    return written;
}

bool CaptureGrid::writePoint(const CaptureChange &change)
{
    const capture::PestColumn column = *table_.column(change.col);
    const auto status = table_.records().savePoint(table_.key(change.row, column.pest), table_.target(column.pest),
                                                   table_.point(change.row), column.value, change.after.value);
    if (status == clsPestMONNew::Failed) {
        showStoreFailure(notSaved(change.row, change.col));
    }
    return status == clsPestMONNew::Done;
}

bool CaptureGrid::writeTotal(const CaptureChange &change)
{
    const capture::PestColumn column = *table_.column(change.col);
    std::int32_t PMDataMaxID = table_.key(capture::TotalRow, column.pest);
    const auto status =
        table_.records().saveTotal(PMDataMaxID, table_.target(column.pest), column.value, change.totalAfter.value);
    if (status == clsPestMONNew::Failed) {
        showStoreFailure(notSaved(capture::TotalRow, change.col));
    }
    return status == clsPestMONNew::Done;
}

void CaptureGrid::showStored(const CaptureChange &change, const Written &written)
{
    const capture::PestColumn column = *table_.column(change.col);
    // The write has reported its failure; if reading fails too, the former values stay.
    basic::runOrIgnore([&] {
        if (const auto total = table_.records().storedTotal(table_.target(column.pest), column.value); total && !written.total) {
            table_.paint(capture::TotalRow, change.col, *total);
        }
        if (change.row != capture::TotalRow && !written.cell) {
            const auto stored = table_.records().storedPoint(table_.target(column.pest), table_.point(change.row), column.value);
            table_.paint(change.row, change.col, stored.value_or(change.before));
        }
    });
}

void CaptureGrid::forgetChanges()
{
    history_.clear();
    unsavedTotals_.clear();
    updateActions();
}

void CaptureGrid::updateActions()
{
    undoAction_->setEnabled(history_.undoable().has_value());
    redoAction_->setEnabled(history_.redoable().has_value());
}

void CaptureGrid::undo()
{
    const auto last = history_.undoable();
    if (last && !editor_.resume() && replay(last->reversed(), QStringLiteral("Undone: %1 = %2"))) {
        history_.undone();
    }
    updateActions();
}

void CaptureGrid::redo()
{
    const auto next = history_.redoable();
    if (next && !editor_.resume() && replay(*next, QStringLiteral("Redone: %1 = %2"))) {
        history_.redone();
    }
    updateActions();
}

bool CaptureGrid::replay(const CaptureChange &change, const QString &report)
{
    ui_.grdPest->setCell(change.row, change.col);
    ui_.grdPest->showCell(change.row, change.col);
    const Written written = write(change, Totals::Save);
    if (!written.all()) {
        history_.clear();
        return false;
    }
    const QString total = change.row == capture::TotalRow ? QString() : QStringLiteral(", total %1").arg(change.totalAfter.value);
    host().showStatus(report.arg(cellName(change.row, change.col), valueText(change)) + total);
    return true;
}

QString CaptureGrid::valueText(const CaptureChange &change) const
{
    if (change.row == capture::TotalRow || table_.isCount()) {
        return QString::number(change.after.value);
    }
    return change.after.value != 0 ? QStringLiteral("Yes") : QStringLiteral("No");
}

QString CaptureGrid::notSaved(int row, int col) const
{
    return QStringLiteral("%1 could not be saved").arg(cellName(row, col));
}

QString CaptureGrid::cellName(int row, int col) const
{
    return QStringLiteral("%1, %2").arg(ui_.cmbBlock->Text(), table_.cellName(row, col));
}

} // namespace pestmon
