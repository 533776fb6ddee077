// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/frmPestMon2.h"

#include "PestMonFarm.h"
#include "pestmon/CaptureCells.h"
#include "platform/basic/Clock.h"
#include "platform/controls/DatePicker.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/ItemCombo.h"
#include "support/ScreenHostDouble.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

#include <memory>

using controls::Answer;
using controls::FlexGrid;
using controls::ItemCombo;
namespace mark = controls::mark;

namespace
{

constexpr int BlockMark = 4;
constexpr int PestMark = 3;
/// First pest's visible column.
constexpr int Value1 = 4;
constexpr int Value2 = 8;
constexpr int Point1 = capture::FirstPointRow;
constexpr int Total = capture::TotalRow;

} // namespace

class frmPestMon2Test : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void emptyPeriodSelectsNothing();
    void listShowsAndFilters();
    void selectionMovesByMouseAndKey();
    void deleteRemovesOneRowAtOnce();
    void periodStartIsKept();
    void activationShowsOpenOnes();
    void activationWaitsForAnOpenTab();

    void newInstructionStartsClean();
    void saveAsksForPersonThenMethod();
    void saveStoresAndShowsPrint();
    void closingUnsavedAsks();
    void unselectingABlockOfASavedOneActsAtOnce();
    void pestTypeNarrowsTheView();
    void allPaintsWithoutChoosing();
    void dateRewritesTheWeekAlone();
    void personOutsideTheListIsKept();
    void tooManyPestsAreAskedAbout();
    void savedInstructionIsPrinted_data();
    void savedInstructionIsPrinted();
    void shownColumnsArePrinted();

    void countsAreSavedWhenLeft();
    void totalIsKeptByDifference();
    void typedTotalStaysTheBase();
    void textBecomesItsNumber();
    void overflowStaysInTheBox();
    void failedWriteKeepsTheBox();
    void emptyRowTakesNothing();
    void answersToggle();
    void answerTakenBackAtTotalZero();
    void firstOfDoubledRowsShows();
    void keysOpenTheBox();

    void completionIssuesOneSuccessor();
    void uncompletedSaveStillRepeats();
    void completedRowOpensForCapture();
    void completionDateStaysWhenReopened();

private:
    template <typename Control> Control &find(const char *name)
    {
        auto *control = screen_->findChild<Control *>(QLatin1String(name));
        Q_ASSERT(control);
        return *control;
    }
    FlexGrid &grid(const char *name) { return find<FlexGrid>(name); }
    void click(const char *name) { find<QAbstractButton>(name).click(); }
    void clickCell(const char *name, int row, int col)
    {
        FlexGrid &cells = grid(name);
        cells.showCell(row, col);
        QTest::mouseClick(cells.viewport(), Qt::LeftButton, {}, cells.cellRect(row, col).center());
    }
    void choose(const char *combo, const QString &text)
    {
        find<ItemCombo>(combo).setListIndex(find<ItemCombo>(combo).findText(text));
    }
    void expectMessage() { host_->dialogs().expectMessage(); }

    /// Issues an instruction through the editor and leaves the tab; its key.
    int issue(const QString &method, std::initializer_list<int> blockRows, std::initializer_list<int> pestRows,
              bool repeat = true);
    /// Selects the row of an instruction in the list of all.
    void select(int key);
    void capture(int key, const QString &block);
    /// Types into a cell of the capture grid and leaves it by Enter.
    void typeInto(int row, int col, const QString &text);
    QString cell(int row, int col) { return grid("grdPest").TextMatrix(row, col); }
    int storedCount(int row, int pest)
    {
        return farm_->number(
            QStringLiteral("Select PMCount from tblPMData where PMDataID = %1").arg(cell(row, capture::keyColumn(pest))));
    }
    int storedTotal(int pest, const char *field = "PMCountMax")
    {
        return farm_->number(QStringLiteral("Select %1 from tblPMDataMax where PMDataMaxID = %2")
                                 .arg(QLatin1String(field), cell(Total, capture::keyColumn(pest))));
    }

    std::unique_ptr<PestMonFarm> farm_;
    std::unique_ptr<ScreenHostDouble> host_;
    std::unique_ptr<frmPestMon2> screen_;
};

void frmPestMon2Test::init()
{
    basic::Clock::stopAt(QDateTime(QDate(2026, 5, 4), QTime(10, 0)));
    farm_ = std::make_unique<PestMonFarm>();
    host_ = std::make_unique<ScreenHostDouble>(farm_->session);
    screen_ = std::make_unique<frmPestMon2>(*host_);
    screen_->resize(1366, 700);
    screen_->show();
    screen_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(screen_.get()));
    screen_->activateScreen();
}

void frmPestMon2Test::cleanup()
{
    QVERIFY2(host_->errors.isEmpty(), qPrintable(host_->errors.join(QLatin1Char(' '))));
    QVERIFY(host_->dialogs().allAsExpected());
    screen_.reset();
    host_.reset();
    farm_.reset();
    basic::Clock::stopAt({});
}

int frmPestMon2Test::issue(const QString &method, std::initializer_list<int> blockRows, std::initializer_list<int> pestRows,
                           bool repeat)
{
    click("cmdAdd");
    choose("cmbPMethod", method);
    choose("cmbPerson", QStringLiteral("Anna"));
    find<QCheckBox>("chkRepeat").setChecked(repeat);
    for (const int row : blockRows) {
        clickCell("grdBlockIn", row, BlockMark);
    }
    for (const int row : pestRows) {
        clickCell("grdPestIn", row, PestMark);
    }
    expectMessage();
    click("cmdTSave");
    const int key = farm_->session.CurrentPMTransID;
    click("cmdTCancel");
    return key;
}

void frmPestMon2Test::select(int key)
{
    click("chkAll");
    FlexGrid &list = grid("grdGS");
    for (int row = 1; row < list.Rows(); ++row) {
        if (list.TextMatrix(row, 0) == QString::number(key)) {
            clickCell("grdGS", row, 7);
            return;
        }
    }
    QFAIL("the instruction is not in the list");
}

void frmPestMon2Test::capture(int key, const QString &block)
{
    select(key);
    click("cmdComp");
    choose("cmbBlock", block);
    QVERIFY(grid("grdPest").isVisible());
}

void frmPestMon2Test::typeInto(int row, int col, const QString &text)
{
    clickCell("grdPest", row, col);
    auto &box = find<QLineEdit>("txtG1");
    QTest::keyClicks(&box, text);
    QTest::keyClick(&box, Qt::Key_Return);
}

void frmPestMon2Test::emptyPeriodSelectsNothing()
{
    QCOMPARE(grid("grdGS").Rows(), 2);
    farm_->session.CurrentPMTransID = 77;
    clickCell("grdGS", 1, 5);
    QCOMPARE(farm_->session.CurrentPMTransID, 0);
    click("cmdEdit");
    click("cmdComp");
    click("cmdPdel");
    QVERIFY(find<QTabWidget>("tabBlock").isHidden());
}

void frmPestMon2Test::listShowsAndFilters()
{
    const QString add =
        QStringLiteral("INSERT INTO tblPMTrans (PMMethodID, PMTransDate, PMTransDateCom, PMTransCom, PMNotes, PMRepeat) "
                       "VALUES (%1)");
    farm_->session.dbPest->Execute(add.arg(QStringLiteral("1, #02/03/2026#, #02/05/2026#, True, 'done', False")));
    farm_->session.dbPest->Execute(add.arg(QStringLiteral("9, #02/02/2026#, #02/05/2026#, False, 'reopened', True")));
    farm_->session.dbPest->Execute(add.arg(QStringLiteral("1, #12/31/2025#, NULL, False, 'before the period', True")));
    FlexGrid &list = grid("grdGS");
    click("chkAll");
    QCOMPARE(list.Rows(), 4);
    // By date; a method without its row and a completion that was taken back show empty.
    QCOMPARE(list.TextMatrix(1, 7), QStringLiteral("reopened"));
    QCOMPARE(list.TextMatrix(1, 6), QString());
    QCOMPARE(list.TextMatrix(1, 4), QString());
    QCOMPARE(list.TextMatrix(1, 8), QStringLiteral("True"));
    QVERIFY(!list.CellBackColor(1, 7).has_value());
    QCOMPARE(list.TextMatrix(2, 3), QStringLiteral("Yes"));
    QCOMPARE(list.TextMatrix(2, 4), QStringLiteral("2026/02/05"));
    QCOMPARE(list.CellBackColor(2, 7), std::optional(mark::Green));
    QVERIFY(find<QPushButton>("cmdComp").isVisible());
    click("chkComplete");
    QCOMPARE(list.Rows(), 3);
    QVERIFY(find<QPushButton>("cmdComp").isHidden());
    click("chkNComplete");
    QCOMPARE(list.Rows(), 3);
    QVERIFY(find<QPushButton>("cmdComp").isVisible());
    QCOMPARE(farm_->session.ListRow, 1);
}

void frmPestMon2Test::selectionMovesByMouseAndKey()
{
    const int first = issue(QStringLiteral("Count"), {1}, {1});
    const int second = issue(QStringLiteral("Count"), {1}, {1});
    FlexGrid &list = grid("grdGS");
    clickCell("grdGS", 1, 7);
    QCOMPARE(farm_->session.CurrentPMTransID, first);
    QVERIFY(list.CellFontBold(1, 7));
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(farm_->session.CurrentPMTransID, second);
    QVERIFY(!list.CellFontBold(1, 7));
    QVERIFY(list.CellFontBold(2, 7));
    // Onto the empty last row.
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(farm_->session.CurrentPMTransID, 0);
    QVERIFY(!list.CellFontBold(2, 7));
}

void frmPestMon2Test::deleteRemovesOneRowAtOnce()
{
    const int first = issue(QStringLiteral("Count"), {1}, {1});
    issue(QStringLiteral("Count"), {1}, {1});
    select(first);
    click("cmdPdel");
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 1);
    // Its findings stay.
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMTransID = %1").arg(first)), 3);
    QCOMPARE(farm_->session.ListRow, 1);
    QVERIFY(farm_->session.CurrentPMTransID != first);
}

void frmPestMon2Test::periodStartIsKept()
{
    auto &from = find<controls::DatePicker>("dtpDateFrom");
    QCOMPARE(from.Value(), QDate(2026, 1, 1));
    QCOMPARE(find<controls::DatePicker>("dtpDateTo").Value(), QDate(2026, 5, 4));
    from.setFocus();
    from.setValue(QDate(2026, 3, 1));
    grid("grdGS").setFocus();
    QCOMPARE(farm_->session.CurrentSDate, QStringLiteral("2026/03/01"));
    frmPestMon2 next(*host_);
    QCOMPARE(next.findChild<controls::DatePicker *>(QStringLiteral("dtpDateFrom"))->Value(), QDate(2026, 3, 1));
}

void frmPestMon2Test::activationShowsOpenOnes()
{
    issue(QStringLiteral("Count"), {1}, {1});
    click("chkComplete");
    QCOMPARE(grid("grdGS").Rows(), 2);
    screen_->activateScreen();
    QCOMPARE(grid("grdGS").Rows(), 3);
    QVERIFY(find<QRadioButton>("chkComplete").isChecked());
    // Nothing was remembered, so the empty last row is selected.
    farm_->session.ListRow = 0;
    screen_->activateScreen();
    QCOMPARE(grid("grdGS").Row(), 2);
    QCOMPARE(farm_->session.CurrentPMTransID, 0);
}

void frmPestMon2Test::activationWaitsForAnOpenTab()
{
    click("cmdAdd");
    clickCell("grdBlockIn", 1, BlockMark);
    farm_->session.FilterAll = true;
    screen_->activateScreen();
    QCOMPARE(grid("grdBlockIn").CellBackColor(1, BlockMark), std::optional(mark::Yellow));
    QVERIFY(farm_->session.FilterAll);
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
    QVERIFY(!farm_->session.FilterAll);
}

void frmPestMon2Test::newInstructionStartsClean()
{
    // A choice left in the working tables belongs to nobody.
    host_->objPestMON().New_Add_Block_for_Instruction(1, 3);
    host_->objPestMON().New_Add_Pest_for_Instruction(3);
    farm_->session.CurrentPMCom = true;
    click("cmdAdd");
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTBlock")), 0);
    QCOMPARE(find<QLineEdit>("txtWeekNo").text(), QStringLiteral("18"));
    QVERIFY(find<QCheckBox>("chkRepeat").isChecked());
    QCOMPARE(find<ItemCombo>("cmbPerson").Text(), QString());
    // The inactive block is not offered, a worker without nickname neither.
    QCOMPARE(grid("grdBlockIn").Rows(), 5);
    QCOMPARE(find<ItemCombo>("cmbPerson").ListCount(), 1);
    QCOMPARE(find<QTabWidget>("tabBlock").isTabEnabled(0), false);
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 0);
}

void frmPestMon2Test::saveAsksForPersonThenMethod()
{
    click("cmdAdd");
    expectMessage();
    click("cmdTSave");
    QCOMPARE(host_->dialogs().takeLastText(), QStringLiteral("Select a Person"));
    choose("cmbPerson", QStringLiteral("Anna"));
    expectMessage();
    click("cmdTSave");
    QCOMPARE(host_->dialogs().takeLastText(), QStringLiteral("Select a method"));
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 0);
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
}

void frmPestMon2Test::saveStoresAndShowsPrint()
{
    // Block B states no points and is taken with 5.
    const int key = issue(QStringLiteral("Yes/No"), {1, 2}, {2, 5});
    QCOMPARE(
        farm_->number(QStringLiteral("Select NoofMpoints from tblPMBlockTrans where PMTransID = %1 and BlockID = 2").arg(key)),
        5);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMTransID = %1").arg(key)), 16);
    const dao::Recordset saved = host_->objPestMON().Get_PMTrans(key);
    QCOMPARE(saved.text("PMNotes"), QStringLiteral("NA"));
    QCOMPARE(saved.longValue("PMMethodID"), 2);
    QVERIFY(saved.boolean("PMRepeat"));
    QVERIFY(!host_->status.isEmpty());
    // Opened again, it counts as saved until something changes.
    select(key);
    click("cmdEdit");
    QVERIFY(find<QPushButton>("cmdPALL").isVisible());
    QCOMPARE(find<QLabel>("lblMethod_1").text(), QStringLiteral("Select Blocks (2 Selected)"));
    QTest::keyClicks(&find<QLineEdit>("txtPMNotes"), QStringLiteral("x"));
    QVERIFY(find<QPushButton>("cmdPALL").isHidden());
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
    QCOMPARE(host_->objPestMON().Get_PMTrans(key).text("PMNotes"), QStringLiteral("NA"));
}

void frmPestMon2Test::closingUnsavedAsks()
{
    click("cmdAdd");
    choose("cmbPMethod", QStringLiteral("Count"));
    choose("cmbPerson", QStringLiteral("Anna"));
    host_->dialogs().queueAnswer(Answer::Yes);
    expectMessage();
    click("cmdTCancel");
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 1);
    const auto &asked = host_->dialogs().shown().front();
    QCOMPARE(asked.text, QStringLiteral("Do you want to save the changes?"));
    QCOMPARE(asked.title, QStringLiteral("Save Changes"));
    QCOMPARE(asked.preselected, Answer::Yes);
}

void frmPestMon2Test::unselectingABlockOfASavedOneActsAtOnce()
{
    const int key = issue(QStringLiteral("Count"), {1, 3}, {1, 2});
    select(key);
    click("cmdEdit");
    clickCell("grdBlockIn", 3, 2);
    clickCell("grdPestIn", 2, PestMark);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMBlockTrans where PMTransID = %1").arg(key)), 1);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTarTrans where PMTransID = %1").arg(key)), 1);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMTransID = %1").arg(key)), 10);
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
}

void frmPestMon2Test::pestTypeNarrowsTheView()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1, 4});
    select(key);
    click("cmdEdit");
    choose("cmbTPest", QStringLiteral("Weeds"));
    QCOMPARE(grid("grdPestIn").Rows(), 5 + 2);
    // Pest 4 is a weed and chosen; pest 1 is out of view and stays chosen.
    QCOMPARE(grid("grdPestIn").CellBackColor(1, PestMark), std::optional(mark::Yellow));
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTPest")), 2);
    click("cmdTCancel");
    // In an unsaved one a chosen pest that comes into view again is dropped, one out of view is kept.
    click("cmdAdd");
    clickCell("grdPestIn", 1, PestMark);
    clickCell("grdPestIn", 4, PestMark);
    choose("cmbTPest", QStringLiteral("Weeds"));
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTPest")), 1);
    QCOMPARE(farm_->number(QStringLiteral("Select CTargetID from tblPMTPest")), 1);
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
}

void frmPestMon2Test::allPaintsWithoutChoosing()
{
    click("cmdAdd");
    click("chkSelectPest");
    const FlexGrid &pests = grid("grdPestIn");
    QCOMPARE(pests.TextMatrix(20, PestMark), QStringLiteral("+"));
    QCOMPARE(pests.CellBackColor(20, PestMark), std::optional(mark::Yellow));
    QVERIFY(!pests.CellBackColor(21, PestMark).has_value());
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTPest")), 0);
    click("chkSelectPest");
    QCOMPARE(pests.TextMatrix(20, PestMark), QString());
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
}

void frmPestMon2Test::dateRewritesTheWeekAlone()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1});
    select(key);
    click("cmdEdit");
    auto &date = find<controls::DatePicker>("dtpPestM");
    date.setFocus();
    QTest::keyClick(&date, Qt::Key_Up);
    QCOMPARE(date.Value(), QDate(2027, 5, 4));
    QCOMPARE(farm_->session.CurrentPMDate.date(), QDate(2027, 5, 4));
    QVERIFY(find<QPushButton>("cmdPALL").isVisible());
    click("cmdTCancel");
}

void frmPestMon2Test::personOutsideTheListIsKept()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1});
    farm_->session.dbPest->Execute(QStringLiteral("UPDATE tblPMTrans SET PMPerson = 'Zoë, who left'"));
    select(key);
    click("cmdEdit");
    QCOMPARE(find<ItemCombo>("cmbPerson").Text(), QStringLiteral("Zoë, who left"));
    QCOMPARE(find<ItemCombo>("cmbPerson").ListIndex(), -1);
    expectMessage();
    click("cmdTSave");
    QCOMPARE(host_->objPestMON().Get_PMTrans(key).text("PMPerson"), QStringLiteral("Zoë, who left"));
    click("cmdTCancel");
}

void frmPestMon2Test::tooManyPestsAreAskedAbout()
{
    const int key = issue(QStringLiteral("Count"), {1}, {});
    select(key);
    click("cmdEdit");
    expectMessage();
    click("cmdExcel");
    QCOMPARE(host_->dialogs().takeLastText(), QStringLiteral("No pests are specified.\n\nSelect the pests to monitor."));
    for (int row = 1; row <= 16; ++row) {
        clickCell("grdPestIn", row, PestMark);
    }
    expectMessage();
    click("cmdTSave");
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdPALL");
    QCOMPARE(host_->dialogs().shown().back().text, QStringLiteral("Too many pests to monitor selected. Continue."));
    QCOMPARE(host_->dialogs().shown().back().preselected, Answer::No);
    clickCell("grdPestIn", 16, PestMark);
    expectMessage();
    click("cmdTSave");
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdPALL");
    QCOMPARE(host_->dialogs().shown().back().text, QStringLiteral("Print?"));
    click("cmdTCancel");
}

void frmPestMon2Test::savedInstructionIsPrinted_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("a sheet per block") << "cmdExcel";
    QTest::newRow("one sheet") << "cmdPALL";
}

void frmPestMon2Test::savedInstructionIsPrinted()
{
    QFETCH(QString, button);
    const int key = issue(QStringLiteral("Count"), {1, 2}, {1, 2});
    select(key);
    click("cmdEdit");
    host_->dialogs().queueAnswer(Answer::Yes);
    click(qPrintable(button));
    QCOMPARE(host_->launcher().opened.size(), 1);
    QVERIFY2(QFile::exists(host_->launcher().opened[0]), qPrintable(host_->launcher().opened[0]));
    QVERIFY(find<QProgressBar>("ProgressBar1").isHidden());
    QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
    click("cmdTCancel");
}

void frmPestMon2Test::shownColumnsArePrinted()
{
    QDir(farm_->appPath()).mkpath(QStringLiteral("Templates"));
    excel::Application().Workbooks().Add().SaveAs(farm_->appPath() + QStringLiteral("/Templates/PestMoni.xls"));
    capture(issue(QStringLiteral("Yes/No"), {1}, {1, 2}), QStringLiteral("Blok A"));
    clickCell("grdPest", Point1, Value2);
    click("cmdPP");
    QCOMPARE(host_->launcher().opened.size(), 1);
    const FlexGrid &cells = grid("grdPest");
    QCOMPARE(std::pair(cells.Row(), cells.Col()), std::pair(cells.Rows() - 1, cells.Cols() - 1));
    excel::Application reader;
    reader.Workbooks().Open(host_->launcher().opened[0]);
    // The hidden columns between take no letter.
    QCOMPARE(reader.Range(QStringLiteral("C5")).value(), QStringLiteral("Pest 02"));
    QCOMPARE(reader.Range(QStringLiteral("C8")).value(), QStringLiteral("Yes"));
    QCOMPARE(reader.Range(QStringLiteral("B8")).value(), QStringLiteral(" "));
    QCOMPARE(reader.Range(QStringLiteral("A2")).value(), QStringLiteral("Block :  Blok A"));
}

void frmPestMon2Test::countsAreSavedWhenLeft()
{
    capture(issue(QStringLiteral("Count"), {1}, {1, 2}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("7"));
    QCOMPARE(cell(Point1, Value1), QStringLiteral("7"));
    QCOMPARE(grid("grdPest").CellBackColor(Point1, Value1), std::optional(mark::Yellow));
    QCOMPARE(storedCount(Point1, 1), 7);
    QCOMPARE(storedTotal(1), 7);
    QCOMPARE(grid("grdPest").CellBackColor(Total, Value1), std::optional(mark::Green));
    // Leaving by a click on another cell saves and opens the box there.
    clickCell("grdPest", Point1 + 1, Value1);
    QTest::keyClicks(&find<QLineEdit>("txtG1"), QStringLiteral("2"));
    clickCell("grdPest", Point1, Value2);
    QCOMPARE(storedCount(Point1 + 1, 1), 2);
    QCOMPARE(storedTotal(1), 9);
    QVERIFY(find<QLineEdit>("txtG1").isVisible());
    QCOMPARE(find<QLineEdit>("txtG1").text(), QStringLiteral("0"));
    click("Command4");
    // Back to nothing: "0" on white again, the total empty until it is read anew.
    QVERIFY(find<QTabWidget>("tabBlock").isHidden());
}

void frmPestMon2Test::totalIsKeptByDifference()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("3"));
    typeInto(Point1, Value1, QStringLiteral("5"));
    QCOMPARE(cell(Total, Value1), QStringLiteral("5"));
    typeInto(Point1, Value1, QStringLiteral("0"));
    QCOMPARE(cell(Point1, Value1), QStringLiteral("0"));
    QCOMPARE(grid("grdPest").CellBackColor(Point1, Value1), std::optional(mark::White));
    QCOMPARE(cell(Total, Value1), QString());
    QCOMPARE(grid("grdPest").CellBackColor(Total, Value1), std::optional(mark::White));
    choose("cmbBlock", QStringLiteral("Blok A"));
    QCOMPARE(cell(Total, Value1), QStringLiteral("0"));
}

void frmPestMon2Test::typedTotalStaysTheBase()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    typeInto(Total, Value1, QStringLiteral("40"));
    QCOMPARE(storedTotal(1), 40);
    typeInto(Point1, Value1, QStringLiteral("2"));
    QCOMPARE(cell(Total, Value1), QStringLiteral("42"));
    typeInto(Total, Value1, QStringLiteral("0"));
    QCOMPARE(cell(Total, Value1), QString());
    QCOMPARE(storedTotal(1), 0);
}

void frmPestMon2Test::textBecomesItsNumber()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("12ab"));
    QCOMPARE(storedCount(Point1, 1), 12);
    typeInto(Point1, Value1, QStringLiteral("abc"));
    QCOMPARE(storedCount(Point1, 1), 0);
    QCOMPARE(storedTotal(1), 0);
}

void frmPestMon2Test::overflowStaysInTheBox()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("7"));
    typeInto(Point1, Value1, QStringLiteral("99999"));
    auto &box = find<QLineEdit>("txtG1");
    QVERIFY(box.isVisible());
    QCOMPARE(box.text(), QStringLiteral("99999"));
    QVERIFY(!host_->failure.isEmpty());
    QCOMPARE(cell(Point1, Value1), QStringLiteral("7"));
    QCOMPARE(storedTotal(1), 7);
    // Nothing leads away from it unasked.
    clickCell("grdPest", Point1 + 1, Value1);
    QCOMPARE(grid("grdPest").Row(), Point1);
    QVERIFY(box.isVisible());
    host_->dialogs().queueAnswer(Answer::No);
    click("Command4");
    QVERIFY(find<QTabWidget>("tabBlock").isVisible());
    host_->dialogs().queueAnswer(Answer::Yes);
    click("Command4");
    QVERIFY(find<QTabWidget>("tabBlock").isHidden());
}

void frmPestMon2Test::failedWriteKeepsTheBox()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("3"));
    clickCell("grdPest", Point1, Value1);
    auto &box = find<QLineEdit>("txtG1");
    {
        // Somebody else holds the file, so neither point nor total can be written.
        const auto other = dao::Workspace::OpenDatabase(farm_->session.PestDBFile, false, false, store::connectText());
        dao::WriteScope held(*other);
        other->Execute(QStringLiteral("UPDATE tblPMMethod SET PMMethod = PMMethod"));
        QTest::keyClicks(&box, QStringLiteral("8"));
        QTest::keyClick(&box, Qt::Key_Return);
        QVERIFY(box.isVisible());
        QCOMPARE(box.text(), QStringLiteral("8"));
        QVERIFY(host_->failure.contains(QStringLiteral("point 1")));
    }
    QCOMPARE(storedCount(Point1, 1), 3);
    // A second try writes both, and does not count the difference twice.
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Return);
    QVERIFY(!box.isVisible());
    QCOMPARE(storedCount(Point1, 1), 8);
    QCOMPARE(storedTotal(1), 8);
}

void frmPestMon2Test::emptyRowTakesNothing()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    const int spare = grid("grdPest").Rows() - 1;
    clickCell("grdPest", spare, Value1);
    QVERIFY(!find<QLineEdit>("txtG1").isVisible());
    QCOMPARE(storedTotal(1), 0);
    click("Command4");
    capture(issue(QStringLiteral("Yes/No"), {1}, {1}), QStringLiteral("Blok A"));
    clickCell("grdPest", spare, Value1);
    QVERIFY(!grid("grdPest").CellBackColor(spare, Value1).has_value());
    QCOMPARE(storedTotal(1, "PMYesMax"), 0);
}

void frmPestMon2Test::answersToggle()
{
    capture(issue(QStringLiteral("Yes/No"), {1}, {1, 2}), QStringLiteral("Blok A"));
    FlexGrid &cells = grid("grdPest");
    QCOMPARE(cells.TextMatrix(1, Value2), QStringLiteral("Y/N"));
    clickCell("grdPest", Point1, Value2);
    clickCell("grdPest", Point1 + 1, Value2);
    QCOMPARE(cells.CellBackColor(Point1, Value2), std::optional(mark::Red));
    QCOMPARE(cells.TextMatrix(Point1, Value2), QString());
    QCOMPARE(cells.Col(), capture::PointColumn);
    QCOMPARE(cell(Total, Value2), QStringLiteral("2"));
    QCOMPARE(storedTotal(2, "PMYesMax"), 2);
    QCOMPARE(storedTotal(1, "PMYesMax"), 0);
    clickCell("grdPest", Point1, Value2);
    QCOMPARE(cells.CellBackColor(Point1, Value2), std::optional(mark::White));
    QCOMPARE(storedTotal(2, "PMYesMax"), 1);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMYes = True")), 1);
    // The total can be typed over by hand here too.
    typeInto(Total, Value2, QStringLiteral("9"));
    QCOMPARE(storedTotal(2, "PMYesMax"), 9);
    QCOMPARE(storedTotal(2), 0);
}

void frmPestMon2Test::answerTakenBackAtTotalZero()
{
    capture(issue(QStringLiteral("Yes/No"), {1}, {1}), QStringLiteral("Blok A"));
    clickCell("grdPest", Point1, Value1);
    typeInto(Total, Value1, QStringLiteral("0"));
    clickCell("grdPest", Point1, Value1);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMYes = True")), 0);
    QCOMPARE(storedTotal(1, "PMYesMax"), 0);
}

void frmPestMon2Test::firstOfDoubledRowsShows()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1});
    capture(key, QStringLiteral("Blok A"));
    typeInto(Point1 + 1, Value1, QStringLiteral("6"));
    click("Command4");
    select(key);
    click("cmdEdit");
    expectMessage();
    click("cmdTSave");
    click("cmdTCancel");
    capture(key, QStringLiteral("Blok A"));
    // Two sets of rows now; point 1 lost its first row, point 2 still shows what was typed.
    QCOMPARE(grid("grdPest").Rows(), Point1 + 3 + 1);
    QCOMPARE(cell(Point1 + 1, Value1), QStringLiteral("6"));
    QCOMPARE(cell(Point1, Value1), QStringLiteral("0"));
}

void frmPestMon2Test::keysOpenTheBox()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    FlexGrid &cells = grid("grdPest");
    auto &box = find<QLineEdit>("txtG1");
    cells.setFocus();
    cells.setCell(Point1, Value1);
    QTest::keyClick(&cells, Qt::Key_4);
    QVERIFY(box.isVisible());
    QCOMPARE(box.text(), QStringLiteral("4"));
    // Down saves and goes on to the next point.
    QTest::keyClick(&box, Qt::Key_Down);
    QCOMPARE(storedCount(Point1, 1), 4);
    QCOMPARE(cells.Row(), Point1 + 1);
    QVERIFY(cells.hasFocus());
    // Enter opens with the cell's own text.
    QTest::keyClick(&cells, Qt::Key_Up);
    QTest::keyClick(&cells, Qt::Key_Return);
    QCOMPARE(box.text(), QStringLiteral("4"));
    QTest::keyClick(&box, Qt::Key_Return);
    QVERIFY(!box.isVisible());
    QCOMPARE(cells.Row(), Point1);
    QTest::keyClick(&cells, Qt::Key_Right);
    QVERIFY(!box.isVisible());
}

void frmPestMon2Test::completionIssuesOneSuccessor()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1});
    capture(key, QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("7"));
    QTest::keyClicks(&find<QLineEdit>("txtPMMNotes"), QStringLiteral(" seen"));
    click("cmdSaveTrans");
    click("cmdSaveTrans");
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 2);
    const dao::Recordset done = host_->objPestMON().Get_PMTrans(key);
    QVERIFY(done.boolean("PMTransCom"));
    QCOMPARE(done.date("PMTransDateCom")->date(), QDate(2026, 5, 4));
    const dao::Recordset next = host_->objPestMON().Get_PMTrans(key + 1);
    QCOMPARE(next.text("PMNotes"), QStringLiteral("NA seen"));
    QVERIFY(!next.boolean("PMTransCom"));
    QCOMPARE(farm_->number(QStringLiteral("Select PMCount from tblPMData where PMTransID = %1").arg(key + 1)), 0);
    QCOMPARE(farm_->session.CurrentPMTransID, key);
    QVERIFY(find<QTabWidget>("tabBlock").isVisible());
}

void frmPestMon2Test::uncompletedSaveStillRepeats()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1});
    capture(key, QStringLiteral("Blok A"));
    click("chkPMCom");
    click("cmdSaveTrans");
    QVERIFY(!host_->objPestMON().Get_PMTrans(key).boolean("PMTransCom"));
    QVERIFY(host_->objPestMON().Get_PMTrans(key).isNull("PMTransDateCom"));
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 2);
    click("Command4");
    const int single = issue(QStringLiteral("Count"), {1}, {1}, false);
    capture(single, QStringLiteral("Blok A"));
    click("cmdSaveTrans");
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 3);
}

void frmPestMon2Test::completedRowOpensForCapture()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1}, false);
    capture(key, QStringLiteral("Blok A"));
    click("cmdSaveTrans");
    click("Command4");
    select(key);
    click("cmdEdit");
    QCOMPARE(find<QTabWidget>("tabBlock").currentIndex(), 0);
    QVERIFY(find<QCheckBox>("chkPMCom").isChecked());
    QVERIFY(!grid("grdPest").isVisible());
}

void frmPestMon2Test::completionDateStaysWhenReopened()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1}, false);
    capture(key, QStringLiteral("Blok A"));
    click("cmdSaveTrans");
    basic::Clock::stopAt(QDateTime(QDate(2026, 5, 9), QTime(10, 0)));
    click("chkPMCom");
    click("cmdSaveTrans");
    const dao::Recordset saved = host_->objPestMON().Get_PMTrans(key);
    QVERIFY(!saved.boolean("PMTransCom"));
    QCOMPARE(saved.date("PMTransDateCom")->date(), QDate(2026, 5, 4));
    click("Command4");
    select(key);
    QCOMPARE(grid("grdGS").TextMatrix(1, 4), QString());
}

QTEST_MAIN(frmPestMon2Test)
#include "frmPestMon2Test.moc"
