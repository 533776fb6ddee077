// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/CaptureGrid.h"

#include "common/MonitoringConstants.h"
#include "common/grid/CellEditor.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/BusyPointer.h"
#include "platform/controls/Dialogs.h"
#include "platform/controls/RedrawPause.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Database.h"
#include "store/clsPestMONNew.h"
#include "ui_frmPestMon2.h"

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

/// The fields of a pest's three values, in the detail and in the total rows, by method.
constexpr std::array<const char *, 3> CountFields{"PMCount", "PMCountUnder", "PMCountUpper"};
constexpr std::array<const char *, 3> YesFields{"PMYes", "PMYesUnder", "PMYesUpper"};
constexpr std::array<const char *, 3> CountTotalFields{"PMCountMax", "PMCountUnderMax", "PMCountUpperMax"};
constexpr std::array<const char *, 3> YesTotalFields{"PMYesMax", "PMYesUnderMax", "PMYesUpperMax"};

const char *field(const std::array<const char *, 3> &fields, int value)
{
    return fields[static_cast<std::size_t>(value - 1)];
}

int selector(clsPestMONNew::FieldSelector first, int value)
{
    return first + value - 1;
}

using PointValues = clsPestMONNew::PointValues;
using TotalValues = clsPestMONNew::TotalValues;
constexpr std::array Counts{&PointValues::PMCount, &PointValues::PMCountUnder, &PointValues::PMCountUpper};
constexpr std::array Answers{&PointValues::PMYes, &PointValues::PMYesUnder, &PointValues::PMYesUpper};
constexpr std::array CountTotals{&TotalValues::PMCountMax, &TotalValues::PMCountUnderMax, &TotalValues::PMCountUpperMax};
constexpr std::array YesTotals{&TotalValues::PMYesMax, &TotalValues::PMYesUnderMax, &TotalValues::PMYesUpperMax};

/// A row with one of its three values set; the others are not written.
template <typename Row, typename Content> Row rowWith(const std::array<Content Row::*, 3> &members, int value, Content content)
{
    Row row;
    row.*members[static_cast<std::size_t>(value - 1)] = content;
    return row;
}

} // namespace

CaptureGrid::CaptureGrid(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui)
    : PestMonPage(screen, host, ui),
      editor_(*ui.grdPest, *ui.txtG1, [this](int row, int col, const QString &typed) { return store(row, col, typed); })
{
    controls::FlexGrid &grid = *ui_.grdPest;
    grid.setMuteZeros(true);
    grid.setCellDescriber([this](int row, int col) { return describe(row, col); });
    layOut();
    on(&grid, &controls::FlexGrid::Click,
       [this](int row, int col) { runOrReport(QStringLiteral("The cell could not be changed"), [&] { click(row, col); }); });
    on(&grid, &controls::FlexGrid::KeyDown, [this](QKeyEvent *event) { keyDown(event); });
}

bool CaptureGrid::isCount() const
{
    return session().CurrentPMMethod == CountMethodName;
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
    const std::array<QString, 3> PMHeader{isCount() ? QStringLiteral("Cnt") : QStringLiteral("Y/N"), QStringLiteral("In"),
                                          QStringLiteral("Out")};
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
    grid.setCell(capture::TotalRow, qMin(capture::FirstValueColumn, grid.Cols() - 1));
    grid.setTopRow(capture::TotalRow);
    if (NoOfPests > 0) {
        grid.setLeftCol(capture::FirstPestColumn);
    }
}

void CaptureGrid::fillTotals()
{
    for (int pest = 1; pest <= NoOfPests; ++pest) {
        const dao::Recordset rows = objPestMON().New_Get_PestDataMax_for_Transaction(
            session().CurrentBlockID, PestIDs[static_cast<std::size_t>(pest - 1)], session().CurrentPMTransID);
        if (rows.Eof()) {
            continue;
        }
        ui_.grdPest->setTextMatrix(capture::TotalRow, capture::keyColumn(pest), rows.text("PMDataMaxID"));
        for (int value = 1; value <= capture::ValuesPerPest; ++value) {
            const std::int32_t total = rows.longValue(field(isCount() ? CountTotalFields : YesTotalFields, value));
            paint(capture::TotalRow, capture::valueColumn(pest, value), capture::storedTotal(basic::toInteger16(total)));
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
        const std::int32_t target = rows.longValue("CTargetID");
        // A file from elsewhere may name a pest twice.
        for (int pest = 1; pest <= NoOfPests; ++pest) {
            const bool empty = grid.TextMatrix(row, capture::keyColumn(pest)).isEmpty();
            if (empty && PestIDs[static_cast<std::size_t>(pest - 1)] == target) {
                fillPointCells(row, pest, rows);
            }
        }
    }
}

void CaptureGrid::fillPointCells(int row, int pest, const dao::Recordset &rows)
{
    ui_.grdPest->setTextMatrix(row, capture::keyColumn(pest), rows.text("PMDataID"));
    for (int value = 1; value <= capture::ValuesPerPest; ++value) {
        if (isCount()) {
            const std::int32_t count = rows.longValue(field(CountFields, value));
            paint(row, capture::valueColumn(pest, value), capture::storedPoint(basic::toInteger16(count)));
        } else {
            const bool yes = rows.boolean(field(YesFields, value));
            paint(row, capture::valueColumn(pest, value), {QString(), yes ? cellColour::Red : cellColour::White, 0});
        }
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
    if (row == capture::TotalRow || isCount()) {
        openEditor();
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
    if (editor_.resume()) {
        return;
    }
    if (toggles) {
        runOrReport(QStringLiteral("The cell could not be changed"), [&] { click(row, col); });
        // A toggle leaves the current cell in the point column; keys continue from the toggled cell.
        grid.setCell(row, col);
        return;
    }
    openEditor();
    if (editor_.isOpen() && character) {
        Send_Keys(event->text(), true);
    }
}

void CaptureGrid::openEditor()
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
    editor_.open();
}

bool CaptureGrid::store(int row, int col, const QString &typed)
{
    const capture::PestColumn column = *capture::pestColumn(col, NoOfPests);
    bool stored = false;
    runOrReport(QStringLiteral("%1 could not be saved").arg(cellName(row, column)), [&] {
        if (row == capture::TotalRow) {
            saveTypedTotal(column, typed);
            stored = true;
        } else {
            stored = savePoint(row, column, typed);
        }
    });
    return stored;
}

void CaptureGrid::saveTypedTotal(const capture::PestColumn &column, const QString &typed)
{
    const capture::CellDisplay total = capture::typedTotal(typed);
    dao::CommitScope scope(*session().dbPest);
    saveTotal(column, total);
    scope.commit();
}

bool CaptureGrid::savePoint(int row, const capture::PestColumn &column, const QString &typed)
{
    const int col = capture::valueColumn(column.pest, column.value);
    const capture::CellDisplay count = capture::typedPoint(typed);
    const std::int16_t total = capture::runningTotal(numberIn(capture::TotalRow, col), OldValue, count.value);
    dao::CommitScope scope(*session().dbPest);
    paint(row, col, count);
    // From here on the total includes the new value; after a failed point a second try starts from it.
    OldValue = count.value;
    const bool totalSaved = saveTotal(column, capture::changedTotal(total));
    session().CurrentCTargetID = PestIDs[static_cast<std::size_t>(column.pest - 1)];
    if (storePoint(column, row, count.value) == clsPestMONNew::Failed) {
        showStoreFailure(QStringLiteral("%1 could not be saved").arg(cellName(row, column)));
        return false;
    }
    scope.commit();
    if (totalSaved) {
        host().showStatus(QStringLiteral("%1 = %2 saved").arg(cellName(row, column)).arg(count.value));
    }
    return true;
}

clsPestMONNew::Status CaptureGrid::storePoint(const capture::PestColumn &column, int row, std::int16_t count)
{
    std::int32_t PMDataID = keyIn(row, column.pest);
    return objPestMON().Save_PestData(PMDataID, session().CurrentPMTransID, session().CurrentCTargetID, point(row),
                                      rowWith(Counts, column.value, count), selector(clsPestMONNew::Count, column.value));
}

bool CaptureGrid::saveTotal(const capture::PestColumn &column, const capture::CellDisplay &total)
{
    paint(capture::TotalRow, capture::valueColumn(column.pest, column.value), total);
    session().CurrentCTargetID = PestIDs[static_cast<std::size_t>(column.pest - 1)];
    std::int32_t PMDataMaxID = keyIn(capture::TotalRow, column.pest);
    const auto first = isCount() ? clsPestMONNew::Count : clsPestMONNew::Yes;
    const auto status = objPestMON().Save_PestDataMax(PMDataMaxID, session().CurrentPMTransID, session().CurrentCTargetID,
                                                      rowWith(isCount() ? CountTotals : YesTotals, column.value, total.value),
                                                      selector(first, column.value));
    const QString name = cellName(capture::TotalRow, column);
    if (status == clsPestMONNew::Failed) {
        showStoreFailure(QStringLiteral("%1 could not be saved").arg(name));
        return false;
    }
    host().showStatus(QStringLiteral("%1 = %2 saved").arg(name).arg(total.value));
    return true;
}

void CaptureGrid::toggle(int row, int col)
{
    controls::FlexGrid &grid = *ui_.grdPest;
    const auto colour = grid.CellBackColor(row, col);
    const auto column = capture::pestColumn(col, NoOfPests);
    if (!column || (colour != cellColour::White && colour != cellColour::Red)) {
        return;
    }
    const bool yes = colour == cellColour::White;
    grid.setCellBackColor(row, col, yes ? cellColour::Red : cellColour::White);
    const QString name = cellName(row, *column);
    dao::CommitScope scope(*session().dbPest);
    const bool totalSaved = Toggle_PMYes(*column, yes);
    session().CurrentCTargetID = PestIDs[static_cast<std::size_t>(column->pest - 1)];
    std::int32_t PMDataID = keyIn(row, column->pest);
    const auto status =
        objPestMON().Save_PestData(PMDataID, session().CurrentPMTransID, session().CurrentCTargetID, point(row),
                                   rowWith(Answers, column->value, yes), selector(clsPestMONNew::Yes, column->value));
    grid.setCol(capture::PointColumn);
    if (status == clsPestMONNew::Failed) {
        showStoreFailure(QStringLiteral("%1 could not be saved").arg(name));
        return;
    }
    scope.commit();
    if (totalSaved) {
        host().showStatus(QStringLiteral("%1 = %2 saved").arg(name, yes ? QStringLiteral("Yes") : QStringLiteral("No")));
    }
}

bool CaptureGrid::Toggle_PMYes(const capture::PestColumn &column, bool yes)
{
    const std::int16_t total = numberIn(capture::TotalRow, capture::valueColumn(column.pest, column.value));
    if (!yes && total < 1) {
        return true;
    }
    return saveTotal(column, capture::changedTotal(capture::runningTotal(total, yes ? 0 : 1, yes ? 1 : 0)));
}

QString CaptureGrid::cellName(int row, const capture::PestColumn &column) const
{
    const QString pest = ui_.grdPest->TextMatrix(capture::PestNameRow, capture::valueColumn(column.pest, column.value));
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
    const bool isAnswer = !isCount() && row != capture::TotalRow && colour.has_value();
    const QString value =
        isAnswer ? (colour == cellColour::Red ? QStringLiteral("Yes") : QStringLiteral("No")) : grid.TextMatrix(row, col);
    return QStringLiteral("%1, %2, %3").arg(position, pest, value);
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
