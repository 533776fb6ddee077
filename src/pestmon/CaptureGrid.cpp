// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/CaptureGrid.h"

#include "common/grid/CellEditor.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/BusyPointer.h"
#include "platform/controls/Dialogs.h"
#include "platform/controls/RedrawPause.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Database.h"
#include "screens/GridActions.h"
#include "store/clsPestMONNew.h"
#include "ui_frmPestMon2.h"

#include <QAction>
#include <QKeyEvent>

#include <array>

namespace pestmon
{

using controls::CellAlignment;
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

constexpr int TallRow = 400;
constexpr int PointWidth = 500;
constexpr int ValueWidth = 1000;

} // namespace

CaptureGrid::CaptureGrid(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui)
    : PestMonPage(screen, host, ui), records_(host),
      editor_(*ui.grdPest, *ui.txtG1, [this](int row, int col, const QString &typed) { return store(row, col, typed); })
{
    controls::FlexGrid &grid = *ui_.grdPest;
    grid.setMuteZeros(true);
    grid.setCellDescriber([this](int row, int col) { return describe(row, col); });
    layOut();
    on(&grid, &controls::FlexGrid::Click,
       [this](int row, int col) { runOrReport(QStringLiteral("The cell could not be changed"), [&] { click(row, col); }); });
    on(&grid, &controls::FlexGrid::KeyDown, [this](QKeyEvent *event) { keyDown(event); });
    undoAction_ = addGridAction(grid, QStringLiteral("Undo"), {QKeySequence::Undo});
    redoAction_ = addGridAction(grid, QStringLiteral("Redo"), {Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z});
    on(undoAction_, &QAction::triggered, [this] { undo(); });
    on(redoAction_, &QAction::triggered, [this] { redo(); });
    grid.setCellCopyText([this](int row, int col) { return copyText(row, col); });
    on(&editor_, &CaptureCellEditor::moveRequested, [this](capture::Direction direction) { move(direction); });
    on(&editor_, &CaptureCellEditor::undoRequested, [this] { undo(); });
    on(&editor_, &CaptureCellEditor::redoRequested, [this] { redo(); });
    on(&editor_, &CaptureCellEditor::cancelled, [this](int row, int col) { cancelled(row, col); });
}

std::int16_t CaptureGrid::numberIn(int row, int col) const
{
    return basic::toInteger16(basic::Val(ui_.grdPest->TextMatrix(row, col)));
}

std::int32_t CaptureGrid::keyIn(int row, int pest) const
{
    return basic::toLong32(basic::Val(ui_.grdPest->TextMatrix(row, capture::keyColumn(pest))));
}

void CaptureGrid::paint(int row, int col, const capture::CellDisplay &display)
{
    ui_.grdPest->setTextMatrix(row, col, display.text);
    ui_.grdPest->setCellBackColor(row, col, display.colour);
    ui_.grdPest->setCellAlignment(row, col, CellAlignment::Centre);
}

void CaptureGrid::clear()
{
    editor_.close();
    forgetChanges();
    NoOfPests = 0;
    PestIDs.clear();
    layOut();
}

void CaptureGrid::layOut()
{
    controls::FlexGrid &grid = *ui_.grdPest;
    grid.Clear();
    grid.setRows(capture::FirstPointRow);
    grid.setCols(capture::columnsFor(NoOfPests));
    grid.setFixedRows(capture::TotalRow);
    grid.setFrozenRows(1);
    grid.setFixedCols(capture::FirstPestColumn);
    grid.setRowHeight(capture::PestNameRow, TallRow);
    grid.setRowHeight(capture::TotalRow, TallRow);
    grid.setColWidth(0, 0);
    grid.setColWidth(1, 0);
    grid.setColWidth(capture::PointColumn, PointWidth);
    for (int pest = 1; pest <= NoOfPests; ++pest) {
        grid.setColWidth(capture::keyColumn(pest), 0);
        grid.setColWidth(capture::valueColumn(pest, 1), ValueWidth);
        grid.setColWidth(capture::valueColumn(pest, 2), 0);
        grid.setColWidth(capture::valueColumn(pest, 3), 0);
    }
    grid.setMergeCol(capture::PointColumn, true);
    grid.setMergeRow(capture::PestNameRow, true);
    grid.setColAlignment(capture::PointColumn, CellAlignment::Centre);
    grid.setTextMatrix(capture::PestNameRow, 0, QStringLiteral("PMTransID"));
    grid.setTextMatrix(capture::HeadingRow, capture::PointColumn, QStringLiteral("Point"));
    grid.setTextMatrix(capture::TotalRow, capture::PointColumn, QStringLiteral("(Total)"));
    for (const int row : {capture::HeadingRow, capture::TotalRow}) {
        grid.setCellFontBold(row, capture::PointColumn, true);
    }
}

void CaptureGrid::writeHeadings(const std::vector<QString> &names)
{
    controls::FlexGrid &grid = *ui_.grdPest;
    const std::array<QString, 3> PMHeader{records_.isCount() ? QStringLiteral("Cnt") : QStringLiteral("Y/N"),
                                          QStringLiteral("In"), QStringLiteral("Out")};
    for (int pest = 1; pest <= NoOfPests; ++pest) {
        for (int value = 1; value <= capture::ValuesPerPest; ++value) {
            const int col = capture::valueColumn(pest, value);
            grid.setTextMatrix(capture::PestNameRow, col, names[static_cast<std::size_t>(pest - 1)]);
            grid.setTextMatrix(capture::HeadingRow, col, PMHeader[static_cast<std::size_t>(value - 1)]);
            for (const int row : {capture::PestNameRow, capture::HeadingRow, capture::TotalRow}) {
                grid.setCellFontBold(row, col, true);
                grid.setCellAlignment(row, col, CellAlignment::Centre);
            }
            grid.setCellBackColor(capture::TotalRow, col, cellColour::Green);
        }
    }
}

void CaptureGrid::Fill_Capture()
{
    const controls::BusyPointer busy;
    editor_.close();
    forgetChanges();
    controls::FlexGrid &grid = *ui_.grdPest;
    const controls::RedrawPause pause(grid);
    NoOfPests = objPestMON().No_of_Pests(session().CurrentPMTransID);
    PestIDs.clear();
    std::vector<QString> names;
    for (dao::Recordset rows = objPestMON().Get_Pests_For_Transaction(session().CurrentPMTransID); !rows.Eof(); rows.MoveNext()) {
        PestIDs.push_back(rows.longValue("CCTargetID"));
        names.push_back(objPestMON().CTarget_Is(PestIDs.back()));
    }
    layOut();
    writeHeadings(names);
    fillTotals();
    fillPoints();
    grid.setEmptyText(emptyText());
    grid.setCell(capture::FirstPointRow, qMin(capture::FirstValueColumn, grid.Cols() - 1));
    grid.setTopRow(capture::FirstPointRow);
    if (NoOfPests > 0) {
        grid.setLeftCol(capture::FirstPestColumn);
    }
}

QString CaptureGrid::emptyText() const
{
    if (NoOfPests == 0) {
        return QStringLiteral("The instruction has no pests. Close this tab, press Edit and select pests.");
    }
    const bool noPoints = ui_.grdPest->TextMatrix(capture::FirstPointRow, capture::PointColumn).isEmpty();
    return noPoints ? QStringLiteral("The block has no monitoring points. Close this tab, press Edit and save the instruction.")
                    : QString();
}

void CaptureGrid::fillTotals()
{
    for (int pest = 1; pest <= NoOfPests; ++pest) {
        const dao::Recordset rows = records_.totals(target(pest));
        if (rows.Eof()) {
            continue;
        }
        ui_.grdPest->setTextMatrix(capture::TotalRow, capture::keyColumn(pest), rows.text("PMDataMaxID"));
        for (int value = 1; value <= capture::ValuesPerPest; ++value) {
            paint(capture::TotalRow, capture::valueColumn(pest, value), records_.total(rows, value));
        }
    }
}

void CaptureGrid::fillPoints()
{
    controls::FlexGrid &grid = *ui_.grdPest;
    grid.setRows(capture::FirstPointRow + 1);
    int row = capture::FirstPointRow - 1;
    std::optional<std::int32_t> shownPoint;
    // One set for the whole block, by point, pest and key; the first row of a point and pest decides.
    dao::Recordset rows =
        objPestMON().Get_PestData_for_Block_of_Transaction(session().CurrentPMTransID, session().CurrentBlockID);
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::int32_t point = rows.longValue("PMBPunt");
        if (shownPoint != point) {
            shownPoint = point;
            ++row;
            grid.setRows(row + 2);
            grid.setTextMatrix(row, capture::PointColumn, QString::number(point));
        }
        // A file from elsewhere may name a pest twice.
        for (int pest = 1; pest <= NoOfPests; ++pest) {
            const bool empty = grid.TextMatrix(row, capture::keyColumn(pest)).isEmpty();
            if (empty && target(pest) == rows.longValue("CTargetID")) {
                fillPointCells(row, pest, rows);
            }
        }
    }
}

void CaptureGrid::fillPointCells(int row, int pest, const dao::Recordset &rows)
{
    ui_.grdPest->setTextMatrix(row, capture::keyColumn(pest), rows.text("PMDataID"));
    for (int value = 1; value <= capture::ValuesPerPest; ++value) {
        paint(row, capture::valueColumn(pest, value), records_.point(rows, value));
    }
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
    if (row == capture::TotalRow || records_.isCount()) {
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
    const bool editable = row == capture::TotalRow || records_.isCount();
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
    const auto column = capture::pestColumn(grid.Col(), NoOfPests);
    if (!column) {
        return;
    }
    if (grid.Row() > capture::TotalRow && keyIn(grid.Row(), column->pest) == 0) {
        host().showFailure(QStringLiteral("There is no monitoring point to fill in here"));
        return;
    }
    OldValue = numberIn(grid.Row(), grid.Col());
    editor_.open(by);
}

void CaptureGrid::move(capture::Direction direction)
{
    controls::FlexGrid &grid = *ui_.grdPest;
    const int lastPointRow = grid.Rows() - 2;
    const auto next = capture::neighbourCell({grid.Row(), grid.Col()}, NoOfPests, lastPointRow, direction);
    if (!next) {
        return;
    }
    grid.setCell(next->row, next->col);
    grid.showCell(next->row, next->col);
    const int pest = capture::pestColumn(next->col, NoOfPests)->pest;
    if (next->row == capture::TotalRow || (records_.isCount() && keyIn(next->row, pest) != 0)) {
        openEditor(CaptureCellEditor::OpenedBy::Move);
    }
}

capture::CellDisplay CaptureGrid::shown(int row, int col) const
{
    const controls::FlexGrid &grid = *ui_.grdPest;
    if (row != capture::TotalRow && !records_.isCount()) {
        return capture::answer(grid.CellBackColor(row, col) == cellColour::Red);
    }
    return {grid.TextMatrix(row, col), grid.CellBackColor(row, col).value_or(cellColour::White), numberIn(row, col)};
}

CaptureChange CaptureGrid::changeTo(int row, int col, const capture::CellDisplay &cell, const capture::CellDisplay &total) const
{
    return {row, col, shown(row, col), cell, shown(capture::TotalRow, col), total};
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
    return unsavedTotals_.value(col, numberIn(capture::TotalRow, col));
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
    paint(row, col, change->after);
    if (numberIn(capture::TotalRow, col) == change->totalAfter.value) {
        // The stored total includes the new value already; a second try must not add it again.
        OldValue = change->after.value;
    }
    return false;
}

/// After a failed write the cell shows the typed value under its editor.
void CaptureGrid::cancelled(int row, int col)
{
    const CaptureChange unchanged = changeTo(row, col, shown(row, col), shown(capture::TotalRow, col));
    showStored(unchanged, {});
}

void CaptureGrid::toggle(int row, int col)
{
    const auto colour = ui_.grdPest->CellBackColor(row, col);
    if (!capture::pestColumn(col, NoOfPests) || (colour != cellColour::White && colour != cellColour::Red)) {
        return;
    }
    const bool yes = colour == cellColour::White;
    const std::int16_t total = totalBase(col);
    // A No at a total of 0 leaves the total alone.
    const bool counts = yes || total >= 1;
    const capture::CellDisplay newTotal =
        counts ? capture::changedTotal(capture::runningTotal(total, yes ? 0 : 1, yes ? 1 : 0)) : shown(capture::TotalRow, col);
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
        paint(capture::TotalRow, change.col, change.totalAfter);
    }
    if (written.cell) {
        paint(change.row, change.col, change.after);
    }
    if (!written.all()) {
        showStored(change, written);
    }
    return written;
}

bool CaptureGrid::writePoint(const CaptureChange &change)
{
    const capture::PestColumn column = *capture::pestColumn(change.col, NoOfPests);
    const auto status = records_.savePoint(keyIn(change.row, column.pest), target(column.pest), point(change.row), column.value,
                                           change.after.value);
    if (status == clsPestMONNew::Failed) {
        showStoreFailure(notSaved(change.row, change.col));
    }
    return status == clsPestMONNew::Done;
}

bool CaptureGrid::writeTotal(const CaptureChange &change)
{
    const capture::PestColumn column = *capture::pestColumn(change.col, NoOfPests);
    std::int32_t PMDataMaxID = keyIn(capture::TotalRow, column.pest);
    const auto status = records_.saveTotal(PMDataMaxID, target(column.pest), column.value, change.totalAfter.value);
    if (status == clsPestMONNew::Failed) {
        showStoreFailure(notSaved(capture::TotalRow, change.col));
    }
    return status == clsPestMONNew::Done;
}

void CaptureGrid::showStored(const CaptureChange &change, const Written &written)
{
    const capture::PestColumn column = *capture::pestColumn(change.col, NoOfPests);
    // The write has reported its failure; if reading fails too, the former values stay.
    basic::runOrIgnore([&] {
        if (const auto total = records_.storedTotal(target(column.pest), column.value); total && !written.total) {
            paint(capture::TotalRow, change.col, *total);
        }
        if (change.row != capture::TotalRow && !written.cell) {
            const auto stored = records_.storedPoint(target(column.pest), point(change.row), column.value);
            paint(change.row, change.col, stored.value_or(change.before));
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
    if (change.row == capture::TotalRow || records_.isCount()) {
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
    const QString pest = ui_.grdPest->TextMatrix(capture::PestNameRow, col);
    const QString block = ui_.cmbBlock->Text();
    if (row == capture::TotalRow) {
        return QStringLiteral("%1, total, %2").arg(block, pest);
    }
    return QStringLiteral("%1, point %2, %3").arg(block, ui_.grdPest->TextMatrix(row, capture::PointColumn), pest);
}

QString CaptureGrid::describe(int row, int col) const
{
    const controls::FlexGrid &grid = *ui_.grdPest;
    const auto column = capture::pestColumn(col, NoOfPests);
    if (row < capture::TotalRow || !column) {
        return grid.TextMatrix(row, col);
    }
    const QString pest = grid.TextMatrix(capture::PestNameRow, col);
    const QString position = row == capture::TotalRow
        ? QStringLiteral("total")
        : QStringLiteral("point %1").arg(grid.TextMatrix(row, capture::PointColumn));
    const auto colour = grid.CellBackColor(row, col);
    const bool isAnswer = !records_.isCount() && row != capture::TotalRow && colour.has_value();
    const QString value =
        isAnswer ? (colour == cellColour::Red ? QStringLiteral("Yes") : QStringLiteral("No")) : grid.TextMatrix(row, col);
    return QStringLiteral("%1, %2, %3").arg(position, pest, value);
}

QString CaptureGrid::copyText(int row, int col) const
{
    const bool isAnswer =
        row > capture::TotalRow && !records_.isCount() && keyIn(row, capture::pestColumn(col, NoOfPests)->pest) != 0;
    return isAnswer ? (shown(row, col).value != 0 ? QStringLiteral("Yes") : QStringLiteral("No"))
                    : ui_.grdPest->TextMatrix(row, col);
}

std::vector<QStringList> CaptureGrid::shownRows()
{
    controls::FlexGrid &grid = *ui_.grdPest;
    std::vector<QStringList> rows;
    for (int row = 0; row < grid.Rows(); ++row) {
        QStringList cells;
        for (int col = 1; col < grid.Cols(); ++col) {
            if (grid.ColWidth(col) != 0) {
                cells.append(grid.CellBackColor(row, col) == controls::cellColour::Red ? QStringLiteral("Yes")
                                                                                       : grid.TextMatrix(row, col));
            }
        }
        rows.push_back(cells);
    }
    if (grid.Rows() > 0 && grid.Cols() > 1) {
        grid.setCell(grid.Rows() - 1, grid.Cols() - 1);
    }
    return rows;
}

} // namespace pestmon
