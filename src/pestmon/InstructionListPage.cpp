// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/InstructionListPage.h"

#include "common/WeekNumber.h"
#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/BusyPointer.h"
#include "platform/controls/RedrawPause.h"
#include "screens/DayCells.h"
#include "screens/GridActions.h"
#include "screens/GridColumns.h"
#include "screens/Period.h"
#include "store/clsPestMONNew.h"
#include "ui_frmPestMon2.h"

#include <QAction>
#include <QHash>

#include <array>

namespace pestmon
{

namespace
{

enum ListColumn { KeyCol, MethodKeyCol, IssuedCol, DoneCol, CompletedCol, PersonCol, MethodCol, NotesCol, RepeatCol };

constexpr std::array<GridColumn, 9> Columns{{
    {"PMTransID", 0},
    {"PMMethodID", 0},
    {"Date issued", 1100},
    {"Done", 600},
    {"Date Completed", 1100},
    {"Person", 1400},
    {"Method", 1000},
    {"Notes", 3400},
    {"Repeat", 800},
}};

void setDate(DayCells &days, int row, int col, const std::optional<basic::SerialDate> &date)
{
    if (date && !date->isZero()) {
        days.set(row, col, *date);
    }
}

std::optional<basic::SerialDate> dateIn(const controls::FlexGrid &grid, int row, int col)
{
    const QVariant value = grid.cellValue(row, col);
    if (!value.isValid()) {
        return {};
    }
    return value.value<basic::SerialDate>();
}

/// Indexes of the fields in the record set.
struct Fields {
    explicit Fields(const dao::Recordset &rows)
        : key(rows.fieldIndex("PMTransID")), methodKey(rows.fieldIndex("PMMethodID")), issued(rows.fieldIndex("PMTransDate")),
          done(rows.fieldIndex("PMTransCom")), completed(rows.fieldIndex("PMTransDateCom")), person(rows.fieldIndex("PMPerson")),
          notes(rows.fieldIndex("PMNotes")), repeat(rows.fieldIndex("PMRepeat"))
    {
    }
    int key;
    int methodKey;
    int issued;
    int done;
    int completed;
    int person;
    int notes;
    int repeat;
};

void fillRow(controls::FlexGrid &grid, DayCells &days, int row, const dao::Recordset &rows, const Fields &fields,
             const QString &method)
{
    const bool done = rows.boolean(fields.done);
    grid.setTextMatrix(row, KeyCol, rows.text(fields.key));
    grid.setTextMatrix(row, MethodKeyCol, rows.text(fields.methodKey));
    setDate(days, row, IssuedCol, rows.date(fields.issued));
    grid.setTextMatrix(row, DoneCol, done ? QStringLiteral("Yes") : QStringLiteral("No"));
    if (done) {
        setDate(days, row, CompletedCol, rows.date(fields.completed));
    }
    grid.setTextMatrix(row, PersonCol, rows.text(fields.person));
    grid.setTextMatrix(row, MethodCol, method);
    grid.setTextMatrix(row, NotesCol, rows.text(fields.notes));
    grid.setTextMatrix(row, RepeatCol, basic::booleanText(rows.boolean(fields.repeat)));
    for (int col = IssuedCol; done && col <= RepeatCol; ++col) {
        grid.setCellBackColor(row, col, controls::cellColour::Green);
    }
}

QString noInstructionsText(const SessionContext &session)
{
    if (session.FilterAll) {
        return QStringLiteral("There are no instructions in this period. Change the period, or press Add to issue one.");
    }
    return session.FilterCompleted
        ? QStringLiteral("No instruction of this period is completed. Change the period, or choose Not completed or All.")
        : QStringLiteral("There are no open instructions in this period. Change the period, or press Add to issue one.");
}

/// Green is the mark of a completed instruction.
QString describe(const controls::FlexGrid &grid, int row, int col)
{
    const QString issued = grid.TextMatrix(row, IssuedCol);
    if (issued.isEmpty()) {
        return {};
    }
    QStringList parts{QStringLiteral("Instruction of %1").arg(issued),
                      QLatin1String(Columns[static_cast<std::size_t>(col)].header), grid.TextMatrix(row, col)};
    if (grid.CellBackColor(row, col) == controls::cellColour::Green) {
        parts += QStringLiteral("completed");
    }
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

std::int32_t keyIn(const controls::FlexGrid &grid, int row, int col)
{
    return basic::toLong32(basic::Val(grid.TextMatrix(row, col)));
}

} // namespace

InstructionListPage::InstructionListPage(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui)
    : PestMonPage(screen, host, ui)
{
    ui_.grdGS->setKeyClicks(controls::FlexGrid::KeyClick::None);
    ui_.grdGS->setStretchColumns({NotesCol});
    ui_.grdGS->setCellDescriber([&grid = *ui_.grdGS](int row, int col) { return describe(grid, row, col); });
    layOutList(*ui_.grdGS, Columns, 0);
    addActions();
    on(ui_.grdGS, &controls::FlexGrid::Click, [this](int row, int col) { rowClick(row, col); });
    on(ui_.grdGS, &controls::FlexGrid::cellMoved, [this](int row, int col) { rowClick(row, col); });
    on(ui_.grdGS, &controls::FlexGrid::DblClick, [this] { editCurrentRow(); });
    on(ui_.chkComplete, &QRadioButton::clicked, [this] { showOnly(Shown::Completed); });
    on(ui_.chkNComplete, &QRadioButton::clicked, [this] { showOnly(Shown::Open); });
    on(ui_.chkAll, &QRadioButton::clicked, [this] { showOnly(Shown::All); });
    on(ui_.dtpDateFrom, &controls::DatePicker::Change, [this] { periodChanged(); });
    on(ui_.dtpDateTo, &controls::DatePicker::Change, [this] { periodChanged(); });
    on(ui_.dtpDateFrom, &controls::DatePicker::LostFocus, [this] { storePeriodStart(); });
    on(ui_.cmdAdd, &QPushButton::clicked, [this] { Q_EMIT addRequested(); });
    on(ui_.cmdEdit, &QPushButton::clicked, [this] { editCurrentRow(); });
    on(ui_.cmdComp, &QPushButton::clicked, [this] { Q_EMIT captureRequested(); });
    on(ui_.cmdPdel, &QPushButton::clicked, [this] { deleteCurrentRow(); });
}

void InstructionListPage::addActions()
{
    controls::FlexGrid &grid = *ui_.grdGS;
    addGridAction(grid, *ui_.cmdEdit, {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2});
    completeAction_ = addGridAction(grid, *ui_.cmdComp);
    addGridAction(grid, *ui_.cmdAdd, {Qt::Key_Insert});
    addGridAction(grid, *ui_.cmdPdel, {Qt::Key_Delete});
}

void InstructionListPage::load()
{
    readPeriodStart(host());
    showPeriod(host(), *ui_.dtpDateFrom, *ui_.dtpDateTo);
}

void InstructionListPage::Fill_PestList()
{
    const controls::BusyPointer busy;
    const controls::RedrawPause pause(*ui_.grdGS);
    layOutList(*ui_.grdGS, Columns, 0);
    dao::Recordset rows = objPestMON().New_Get_PestTransactions(basic::SerialDate::fromDate(ui_.dtpDateFrom->Value()),
                                                                basic::SerialDate::fromDate(ui_.dtpDateTo->Value()));
    layOutList(*ui_.grdGS, Columns, rows.RecordCount());
    ui_.grdGS->setEmptyText(rows.Eof() ? noInstructionsText(session()) : QString());
    const Fields fields(rows);
    DayCells days(*ui_.grdGS);
    // Thousands of rows share a few methods.
    QHash<std::int32_t, QString> methods;
    for (int row = 1; !rows.Eof(); rows.MoveNext(), ++row) {
        const std::int32_t key = rows.longValue(fields.methodKey);
        if (!methods.contains(key)) {
            const dao::Recordset method = objPestMON().Get_PMMethod_for_PMTrans(key);
            methods.insert(key, method.Eof() ? QString() : method.text("PMMethod"));
        }
        fillRow(*ui_.grdGS, days, row, rows, fields, methods.value(key));
    }
}

void InstructionListPage::activate()
{
    SessionContext &values = session();
    values.FilterCompleted = false;
    values.FilterAll = false;
    Fill_PestList();
    const int rows = ui_.grdGS->Rows();
    if (values.ListCol == 0) {
        values.ListCol = 1;
    }
    if (values.ListRow > rows - 2) {
        values.ListRow = rows - 2;
    }
    if (values.ListRow == 0) {
        values.ListRow = rows - 1;
    }
    selectRow(values.ListRow, values.ListCol);
}

void InstructionListPage::refresh(NoRowMeans noRow)
{
    Fill_PestList();
    if (session().ListRow == 0) {
        session().ListRow = noRow == NoRowMeans::FirstDataRow ? 1 : ui_.grdGS->Rows() - 2;
    }
    selectRow(session().ListRow, session().ListCol);
}

void InstructionListPage::selectRow(int row, int col)
{
    controls::FlexGrid &grid = *ui_.grdGS;
    const int shownCol = col > grid.Cols() - 1 ? 1 : col;
    const int shownRow = row > grid.Rows() - 1 ? 1 : row;
    if (!grid.RowIsVisible(shownRow)) {
        grid.setTopRow(shownRow);
    }
    grid.setCell(shownRow, shownCol);
    rowClick(shownRow, shownCol);
}

void InstructionListPage::setRowBold(int row, bool bold)
{
    for (int col = 1; col < ui_.grdGS->Cols(); ++col) {
        ui_.grdGS->setCellFontBold(row, col, bold);
    }
}

void InstructionListPage::rowClick(int row, int col)
{
    controls::FlexGrid &grid = *ui_.grdGS;
    SessionContext &values = session();
    if (values.ListRow > 0 && values.ListRow < grid.Rows() - 1) {
        setRowBold(values.ListRow, false);
    }
    const bool hasRecord = row > 0 && !grid.TextMatrix(row, KeyCol).trimmed().isEmpty();
    if (hasRecord) {
        setRowBold(row, true);
    }
    grid.setSelectedRow(hasRecord ? row : -1);
    values.ListRow = row;
    values.ListCol = col;
    values.CurrentPMTransID = currentRowKey();
    if (values.CurrentPMTransID == 0) {
        return;
    }
    readCurrentRow();
    values.CurrentPMWeek = weekNumber(currentRowDate(), ui_.dtpPestM->Value());
}

std::int32_t InstructionListPage::currentRowKey() const
{
    return keyIn(*ui_.grdGS, ui_.grdGS->Row(), KeyCol);
}

bool InstructionListPage::currentRowIsDone() const
{
    return ui_.grdGS->TextMatrix(ui_.grdGS->Row(), DoneCol) == QLatin1String("Yes");
}

bool InstructionListPage::currentRowRepeats() const
{
    return ui_.grdGS->TextMatrix(ui_.grdGS->Row(), RepeatCol) == basic::booleanText(true);
}

QDate InstructionListPage::currentRowDate() const
{
    return dateIn(*ui_.grdGS, ui_.grdGS->Row(), IssuedCol).value_or(basic::SerialDate()).date();
}

void InstructionListPage::readCurrentRow()
{
    const controls::FlexGrid &grid = *ui_.grdGS;
    SessionContext &values = session();
    const int row = grid.Row();
    values.CurrentPMTransID = currentRowKey();
    values.CurrentPMMethodID = keyIn(grid, row, MethodKeyCol);
    values.CurrentPMDate = dateIn(grid, row, IssuedCol).value_or(basic::SerialDate());
    values.CurrentPMCom = currentRowIsDone();
    if (const auto completed = dateIn(grid, row, CompletedCol)) {
        values.CurrentPMDateCom = completed;
    }
    values.CurrentPMPerson = grid.TextMatrix(row, PersonCol);
    values.CurrentPMMethod = grid.TextMatrix(row, MethodCol);
    values.CurrentPMNotes = grid.TextMatrix(row, NotesCol);
}

void InstructionListPage::showOnly(Shown shown)
{
    session().FilterCompleted = shown == Shown::Completed;
    session().FilterAll = shown == Shown::All;
    ui_.cmdComp->setVisible(shown != Shown::Completed);
    completeAction_->setVisible(shown != Shown::Completed);
    session().ListRow = 0;
    refresh(NoRowMeans::LastDataRow);
    ui_.grdGS->setFocus();
}

void InstructionListPage::periodChanged()
{
    // An open tab uses the selected record; closing it refreshes the list.
    if (!ui_.tabBlock->isHidden()) {
        return;
    }
    session().ListRow = 0;
    refresh(NoRowMeans::LastDataRow);
}

void InstructionListPage::storePeriodStart()
{
    ::storePeriodStart(session(), *ui_.dtpDateFrom);
}

void InstructionListPage::askForRow() const
{
    host().showNote(QStringLiteral("Select an instruction in the list first."));
}

void InstructionListPage::editCurrentRow()
{
    if (currentRowKey() == 0) {
        askForRow();
        return;
    }
    if (currentRowIsDone()) {
        Q_EMIT captureRequested();
        return;
    }
    readCurrentRow();
    session().CurrentPMRepeat = currentRowRepeats();
    Q_EMIT editRequested();
}

void InstructionListPage::deleteCurrentRow()
{
    if (session().CurrentPMTransID == 0) {
        askForRow();
        return;
    }
    const controls::BusyPointer busy;
    const QString what = instructionName();
    if (objPestMON().Delete_PestMonTrans(session().CurrentPMTransID) == clsPestMONNew::Done) {
        host().showStatus(QStringLiteral("%1 deleted").arg(what));
    } else {
        showStoreFailure(QStringLiteral("%1 could not be deleted").arg(what));
    }
    refresh(NoRowMeans::FirstDataRow);
}

} // namespace pestmon
