// SPDX-License-Identifier: GPL-3.0-or-later
#include "MonitoringRound.h"

#include "pestmon/CaptureCells.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/ItemCombo.h"
#include "platform/dao/Database.h"
#include "platform/dao/Workspace.h"
#include "screens/ChildScreen.h"
#include "shell/MDI_Monitoring.h"
#include "store/Schema.h"
#include "store/clsPestMONNew.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace
{

namespace capture = pestmon::capture;
constexpr int NotesColumn = 7;
constexpr int DoneColumn = 3;
constexpr int IssuedColumn = 2;
constexpr int BlockMark = 4;
constexpr int PestMark = 3;

} // namespace

MonitoringRound::MonitoringRound(MDI_Monitoring &window, QueuedDialogs &dialogs, const RecordingLauncher &launcher,
                                 Report &report)
    : window_(window), dialogs_(dialogs), report_(report), driver_(window), paper_(window, dialogs, launcher, report)
{
}

QString MonitoringRound::countNotes()
{
    return QStringLiteral("Round: counted after the rain");
}

void MonitoringRound::openScreen()
{
    report_.step(QStringLiteral("Started on %1, farm \"%2\"").arg(window_.session().AppPath, window_.session().CurrentFarm));
    report_.check(!window_.session().CurrentFarm.isEmpty(), QStringLiteral("a farm is chosen"));
    report_.screenshot(window_, QStringLiteral("menu"));
    driver_.click("imSpray");
    report_.check(driver_.find<controls::FlexGrid>("grdGS").isVisible(), QStringLiteral("the list of instructions shows"));
    report_.screenshot(window_, QStringLiteral("list"));
}

void MonitoringRound::playCounts()
{
    issue(QStringLiteral("Count"), countNotes(), 2, 3, true);
    openCapture(countNotes());
    typeCounts();
    refuseTooLarge();
    compareWithFile();
    report_.screenshot(window_, QStringLiteral("counts"));
    paper_.printFilledSheet();
    complete();
    checkList(countNotes(), 2);
}

void MonitoringRound::playAnswers()
{
    const QString notes = QStringLiteral("Round: weeds between the rows");
    issue(QStringLiteral("Yes/No"), notes, 1, 2, false);
    openCapture(notes);
    toggleAnswers();
    compareWithFile();
    report_.screenshot(window_, QStringLiteral("answers"));
    paper_.printFilledSheet();
    complete();
    checkList(notes, 1);
}

void MonitoringRound::playReports()
{
    driver_.click("Command1");
    paper_.runReports();
    paper_.openStored();
}

void MonitoringRound::issue(const QString &method, const QString &notes, int blocks, int pests, bool repeat)
{
    report_.step(QStringLiteral("Add an instruction: %1, %2 blocks, %3 pests").arg(method).arg(blocks).arg(pests));
    driver_.click("cmdAdd");
    report_.check(driver_.choose("cmbPMethod", method), QStringLiteral("the method %1 can be chosen").arg(method));
    auto &persons = driver_.find<controls::ItemCombo>("cmbPerson");
    report_.check(persons.ListCount() > 0 && driver_.choose("cmbPerson", persons.List(0)),
                  QStringLiteral("a person can be chosen"));
    driver_.find<QLineEdit>("txtPMNotes").setFocus();
    driver_.type(notes);
    if (!repeat) {
        driver_.click("chkRepeat");
    }
    // The first block by mouse, the others by keys.
    driver_.clickCell("grdBlockIn", 1, BlockMark);
    for (int row = 2; row <= blocks; ++row) {
        driver_.key(Qt::Key_Down);
        driver_.key(Qt::Key_Space);
    }
    for (int row = 1; row <= pests; ++row) {
        driver_.clickCell("grdPestIn", row, PestMark);
    }
    report_.compare(driver_.find<QLabel>("lblMethod_1").text(), QStringLiteral("Select Blocks (%1 Selected)").arg(blocks),
                    QStringLiteral("count of blocks"));
    report_.compare(driver_.find<QLabel>("lblMethod_19").text(),
                    QStringLiteral("Select Pests To Monitor (%1 Selected)").arg(pests), QStringLiteral("count of pests"));
    report_.check(driver_.find<QPushButton>("cmdPALL").isHidden(), QStringLiteral("an unsaved instruction cannot be printed"));
    dialogs_.expectMessage();
    driver_.click("cmdTSave");
    report_.compare(dialogs_.takeLastText(), QStringLiteral("The monitoring instruction was saved - Print the field forms !"),
                    QStringLiteral("message after Save"));
    report_.check(driver_.find<QPushButton>("cmdPALL").isVisible(), QStringLiteral("a saved instruction can be printed"));
    report_.screenshot(window_, QStringLiteral("editor"));
    paper_.printFieldSheets();
    driver_.click("cmdTCancel");
}

void MonitoringRound::openCapture(const QString &notes)
{
    const int row = driver_.findRow("grdGS", NotesColumn, notes);
    report_.check(row > 0, QStringLiteral("the new instruction is in the list"));
    if (row < 0) {
        return;
    }
    driver_.clickCell("grdGS", row, NotesColumn);
    driver_.click("cmdComp");
    auto &blocks = driver_.find<controls::ItemCombo>("cmbBlock");
    report_.check(blocks.ListCount() > 0 && driver_.choose("cmbBlock", blocks.List(0)), QStringLiteral("a block can be chosen"));
    report_.step(QStringLiteral("Complete: block %1, %2 points, %3 pests").arg(blocks.Text()).arg(points()).arg(pests()));
    report_.check(points() > 0 && pests() > 0, QStringLiteral("the block has points and pests"));
}

int MonitoringRound::points() const
{
    // The last row stays empty.
    return driver_.find<controls::FlexGrid>("grdPest").Rows() - capture::FirstPointRow - 1;
}

int MonitoringRound::pests() const
{
    return (driver_.find<controls::FlexGrid>("grdPest").Cols() - capture::FirstPestColumn) / capture::ColumnsPerPest;
}

void MonitoringRound::typeCounts()
{
    auto &grid = driver_.find<controls::FlexGrid>("grdPest");
    for (int pest = 1; pest <= pests(); ++pest) {
        const int col = capture::valueColumn(pest, 1);
        grid.setFocus();
        grid.setCell(capture::FirstPointRow, col);
        int total = 0;
        for (int point = 1; point <= points(); ++point) {
            const int count = (point * (pest + 2)) % 7;
            driver_.type(QString::number(count));
            driver_.key(Qt::Key_Down);
            total += count;
            report_.compare(grid.TextMatrix(capture::TotalRow, col), total == 0 ? QString() : QString::number(total),
                            QStringLiteral("running total of pest %1 after point %2").arg(pest).arg(point));
        }
    }
    // Typing over a value changes the total by the difference.
    const int col = capture::valueColumn(1, 1);
    const double before =
        basic::Val(grid.TextMatrix(capture::TotalRow, col)) - basic::Val(grid.TextMatrix(capture::FirstPointRow, col));
    driver_.clickCell("grdPest", capture::FirstPointRow, col);
    driver_.type(QStringLiteral("12"));
    driver_.key(Qt::Key_Return);
    report_.compare(grid.TextMatrix(capture::TotalRow, col), QString::number(before + 12.0),
                    QStringLiteral("total after typing over"));
}

void MonitoringRound::refuseTooLarge()
{
    auto &grid = driver_.find<controls::FlexGrid>("grdPest");
    const int col = capture::valueColumn(1, 1);
    const QString total = grid.TextMatrix(capture::TotalRow, col);
    driver_.clickCell("grdPest", capture::FirstPointRow, col);
    driver_.type(QStringLiteral("99999"));
    driver_.key(Qt::Key_Return);
    auto &box = driver_.find<QLineEdit>("txtG1");
    report_.check(box.isVisible() && box.text() == QLatin1String("99999"),
                  QStringLiteral("99999 is refused and stays in its box"));
    report_.compare(grid.TextMatrix(capture::TotalRow, col), total, QStringLiteral("total after a refused value"));
    box.setFocus();
    box.selectAll();
    driver_.type(QStringLiteral("12"));
    driver_.key(Qt::Key_Return);
    report_.check(!box.isVisible(), QStringLiteral("the box closes once its value can be saved"));
}

void MonitoringRound::toggleAnswers()
{
    auto &grid = driver_.find<controls::FlexGrid>("grdPest");
    const int col = capture::valueColumn(1, 1);
    for (int point = 1; point <= points(); point += 2) {
        driver_.clickCell("grdPest", capture::FirstPointRow + point - 1, col);
    }
    const int yes = (points() + 1) / 2;
    report_.compare(grid.TextMatrix(capture::TotalRow, col), QString::number(yes), QStringLiteral("answers counted"));
    // Back and forth by key.
    grid.setFocus();
    grid.setCell(capture::FirstPointRow, col);
    driver_.key(Qt::Key_F2);
    report_.compare(grid.TextMatrix(capture::TotalRow, col), yes == 1 ? QString() : QString::number(yes - 1),
                    QStringLiteral("answer taken back"));
    driver_.key(Qt::Key_F2);
    report_.compare(grid.TextMatrix(capture::TotalRow, col), QString::number(yes), QStringLiteral("answer given again"));
}

void MonitoringRound::complete()
{
    report_.step(QStringLiteral("Completed, Save, Close"));
    report_.check(driver_.find<QCheckBox>("chkPMCom").isChecked(), QStringLiteral("Completed is offered"));
    driver_.click("cmdSaveTrans");
    driver_.click("Command4");
}

void MonitoringRound::checkList(const QString &notes, int rows)
{
    driver_.click("chkAll");
    const auto &grid = driver_.find<controls::FlexGrid>("grdGS");
    QStringList done;
    QStringList issued;
    for (int row = 1; row < grid.Rows(); ++row) {
        if (grid.TextMatrix(row, NotesColumn) == notes) {
            done.append(grid.TextMatrix(row, DoneColumn));
            issued.append(grid.TextMatrix(row, IssuedColumn));
            const bool green = grid.CellBackColor(row, NotesColumn) == controls::cellColour::Green;
            report_.check(green == (done.back() == QLatin1String("Yes")), QStringLiteral("completed rows are green, others not"));
        }
    }
    const QString expected = rows == 2 ? QStringLiteral("Yes, No") : QStringLiteral("Yes");
    report_.compare(done.join(QStringLiteral(", ")), expected, QStringLiteral("the instruction and its successor in the list"));
    report_.check(issued.removeDuplicates() == rows - 1, QStringLiteral("the successor bears the same date"));
    report_.screenshot(window_, QStringLiteral("list-completed"));
    report_.step(QStringLiteral("In the list: %1").arg(done.join(QStringLiteral(", "))));
}

void MonitoringRound::compareWithFile()
{
    const SessionContext &session = window_.session();
    // Through a second connection, so that nothing cached is read.
    const auto file = dao::Workspace::OpenDatabase(session.PestDBFile, false, true, store::connectText());
    const auto &grid = driver_.find<controls::FlexGrid>("grdPest");
    const bool counts = session.CurrentPMMethod == QLatin1String("Count");
    int cells = 0;
    for (int pest = 1; pest <= pests(); ++pest) {
        const int col = capture::valueColumn(pest, 1);
        for (int row = capture::TotalRow; row < grid.Rows() - 1; ++row) {
            const bool total = row == capture::TotalRow;
            const dao::Recordset found =
                file->OpenRecordset(QStringLiteral("Select * from %1 where %2 = %3")
                                        .arg(total ? QStringLiteral("tblPMDataMax") : QStringLiteral("tblPMData"),
                                             total ? QStringLiteral("PMDataMaxID") : QStringLiteral("PMDataID"),
                                             grid.TextMatrix(row, capture::keyColumn(pest))));
            if (found.Eof()) {
                report_.check(false, QStringLiteral("row %1, pest %2 has no record").arg(row).arg(pest));
                continue;
            }
            const int stored =
                total ? found.longValue(counts ? "PMCountMax" : "PMYesMax") : found.longValue(counts ? "PMCount" : "PMYes");
            const bool answer = !counts && !total;
            const int shown = answer ? (grid.CellBackColor(row, col) == controls::cellColour::Red ? -1 : 0)
                                     : static_cast<int>(basic::Val(grid.TextMatrix(row, col)));
            report_.compare(QString::number(stored), QString::number(shown),
                            QStringLiteral("row %1, pest %2 in the file").arg(row).arg(pest));
            ++cells;
        }
    }
    report_.step(QStringLiteral("%1 cells read back from %2").arg(cells).arg(session.PestDBFile));
}

void MonitoringRound::reopen(const QString &notes)
{
    report_.step(QStringLiteral("Restarted"));
    driver_.click("imSpray");
    driver_.click("chkAll");
    const int row = driver_.findRow("grdGS", NotesColumn, notes);
    report_.check(row > 0, QStringLiteral("the completed instruction is still there"));
    if (row < 0) {
        return;
    }
    // A completed row opens for capture.
    driver_.doubleClickCell("grdGS", row, NotesColumn);
    auto &blocks = driver_.find<controls::ItemCombo>("cmbBlock");
    report_.check(driver_.choose("cmbBlock", blocks.List(0)), QStringLiteral("its block can be chosen"));
    compareWithFile();
    report_.compare(driver_.find<controls::FlexGrid>("grdPest").TextMatrix(capture::FirstPointRow, capture::valueColumn(1, 1)),
                    QStringLiteral("12"), QStringLiteral("a count typed before the restart"));
    driver_.click("Command4");
}
