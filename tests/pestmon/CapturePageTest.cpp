// SPDX-License-Identifier: GPL-3.0-or-later
#include "DamagedFile.h"
#include "PestMonScreen.h"

#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"

#include <QDir>
#include <QGroupBox>

class CapturePageTest : public PestMonScreen
{
    Q_OBJECT

private Q_SLOTS:
    void countsAreSavedWhenLeft();
    void shownColumnsArePrinted();
    void totalIsARunningSum();
    void typedTotalIsTheBase();
    void textBecomesItsNumber();
    void overflowStaysInTheEditor();
    void failedWriteLeavesTheEditorOpen();
    void discardedValueIsNotShown();
    void failedTotalIsReported();
    void withoutPestsOnlyHeadingsShow();
    void pestNamedTwiceShowsTwice();
    void emptyRowIsNotEditable();
    void answersToggle();
    void answerResetAtTotalZero();
    void firstOfDuplicateRowsShows();
    void keysOpenTheEditor();
    void editorPassesTheFocusOn_data();
    void editorPassesTheFocusOn();
    void completionIssuesOneSuccessor();
    void uncompletedSaveAlsoRepeats();
    void failedRepeatLeavesNothingAndIsIssuedByTheNextSave_data();
    void failedRepeatLeavesNothingAndIsIssuedByTheNextSave();
    void completedRowOpensForCapture();
    void completionDateStaysWhenReopened();
};

void CapturePageTest::countsAreSavedWhenLeft()
{
    capture(issue(QStringLiteral("Count"), {1}, {1, 2}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("7"));
    QCOMPARE(grid("grdPest").cellDescription(Point1, Value1), QStringLiteral("point 1, Pest 01, 7"));
    QCOMPARE(grid("grdPest").cellDescription(Total, Value1), QStringLiteral("total, Pest 01, 7"));
    QCOMPARE(cell(Point1, Value1), QStringLiteral("7"));
    QCOMPARE(grid("grdPest").CellBackColor(Point1, Value1), std::optional(cellColour::Yellow));
    QCOMPARE(storedCount(Point1, 1), 7);
    QCOMPARE(storedTotal(1), 7);
    QCOMPARE(grid("grdPest").CellBackColor(Total, Value1), std::optional(cellColour::Green));
    // A click on another cell saves and opens the editor there.
    clickCell("grdPest", Point1 + 1, Value1);
    QTest::keyClicks(&find<QLineEdit>("txtG1"), QStringLiteral("2"));
    clickCell("grdPest", Point1, Value2);
    QCOMPARE(storedCount(Point1 + 1, 1), 2);
    QCOMPARE(storedTotal(1), 9);
    QVERIFY(find<QLineEdit>("txtG1").isVisible());
    QCOMPARE(find<QLineEdit>("txtG1").text(), QStringLiteral("0"));
    click("Command4");
    QVERIFY(find<QTabWidget>("tabBlock").isHidden());
}

void CapturePageTest::totalIsARunningSum()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("3"));
    typeInto(Point1, Value1, QStringLiteral("5"));
    QCOMPARE(cell(Total, Value1), QStringLiteral("5"));
    typeInto(Point1, Value1, QStringLiteral("0"));
    QCOMPARE(cell(Point1, Value1), QStringLiteral("0"));
    QCOMPARE(grid("grdPest").CellBackColor(Point1, Value1), std::optional(cellColour::White));
    QCOMPARE(cell(Total, Value1), QString());
    QCOMPARE(grid("grdPest").CellBackColor(Total, Value1), std::optional(cellColour::White));
    choose("cmbBlock", QStringLiteral("Blok A"));
    QCOMPARE(cell(Total, Value1), QStringLiteral("0"));
}

void CapturePageTest::typedTotalIsTheBase()
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

void CapturePageTest::textBecomesItsNumber()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("12ab"));
    QCOMPARE(storedCount(Point1, 1), 12);
    typeInto(Point1, Value1, QStringLiteral("abc"));
    QCOMPARE(storedCount(Point1, 1), 0);
    QCOMPARE(storedTotal(1), 0);
}

void CapturePageTest::overflowStaysInTheEditor()
{
    capture(issue(QStringLiteral("Count"), {1, 3}, {1}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("7"));
    typeInto(Point1, Value1, QStringLiteral("99999"));
    auto &box = find<QLineEdit>("txtG1");
    QVERIFY(box.isVisible());
    QCOMPARE(box.text(), QStringLiteral("99999"));
    QVERIFY2(host_->failure.endsWith(QStringLiteral("could not be saved: A count takes whole numbers from -32768 to 32767.")),
             qPrintable(host_->failure));
    QCOMPARE(cell(Point1, Value1), QStringLiteral("7"));
    QCOMPARE(storedTotal(1), 7);
    // The focus cannot leave it without a question, and further typing replaces the text.
    clickCell("grdPest", Point1 + 1, Value1);
    QCOMPARE(grid("grdPest").Row(), Point1);
    QVERIFY(box.isVisible());
    QCOMPARE(box.selectedText(), QStringLiteral("99999"));
    find<QLineEdit>("txtPMMNotes").setFocus();
    for (const Qt::Key key : {Qt::Key_5, Qt::Key_Return, Qt::Key_F2}) {
        grid("grdPest").setFocus();
        QTest::keyClick(&grid("grdPest"), key);
        QCOMPARE(box.text(), QStringLiteral("99999"));
        QVERIFY(box.hasFocus());
    }
    host_->dialogs().queueAnswer(Answer::No);
    choose("cmbBlock", QStringLiteral("Blok C"));
    QCOMPARE(find<ItemCombo>("cmbBlock").Text(), QStringLiteral("Blok A"));
    QCOMPARE(farm_->session.CurrentBlockID, 1);
    QCOMPARE(box.text(), QStringLiteral("99999"));
    host_->dialogs().queueAnswer(Answer::No);
    click("Command4");
    QVERIFY(find<QTabWidget>("tabBlock").isVisible());
    host_->dialogs().queueAnswer(Answer::Yes);
    click("Command4");
    QVERIFY(find<QTabWidget>("tabBlock").isHidden());
}

void CapturePageTest::failedWriteLeavesTheEditorOpen()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("3"));
    clickCell("grdPest", Point1, Value1);
    auto &box = find<QLineEdit>("txtG1");
    {
        // Another connection locks the file, so neither point nor total can be written.
        const auto other = dao::Workspace::OpenDatabase(farm_->session.PestDBFile, false, false, store::connectText());
        dao::CommitScope held(*other);
        other->Execute(QStringLiteral("UPDATE tblPMMethod SET PMMethod = PMMethod"));
        QTest::keyClicks(&box, QStringLiteral("8"));
        QTest::keyClick(&box, Qt::Key_Return);
        QVERIFY(box.isVisible());
        QCOMPARE(box.text(), QStringLiteral("8"));
        QVERIFY(host_->failure.contains(QStringLiteral("point 1")));
    }
    QCOMPARE(storedCount(Point1, 1), 3);
    // A second try writes both, and counts the difference once.
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Return);
    QVERIFY(!box.isVisible());
    QCOMPARE(storedCount(Point1, 1), 8);
    QCOMPARE(storedTotal(1), 8);
}

void CapturePageTest::discardedValueIsNotShown()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1}, false);
    farm_->session.dbPest->Execute(QStringLiteral("UPDATE tblPMTrans SET PMNotes = 'R&D'"));
    capture(key, QStringLiteral("Blok A"));
    QVERIFY(find<QGroupBox>("fraBasic").title().endsWith(QStringLiteral(": R&&D")));
    // Counts must be unique, so that a second equal one is refused.
    const char *const once = "CREATE UNIQUE INDEX refused ON tblPMData (PMCount) WHERE PMCount > 0";
    QVERIFY(changeFile(farm_->session.PestDBFile, once));
    typeInto(Point1 + 1, Value1, QStringLiteral("8"));
    typeInto(Point1, Value1, QStringLiteral("8"));
    QCOMPARE(cell(Point1, Value1), QStringLiteral("8"));
    host_->dialogs().queueAnswer(Answer::Yes);
    click("cmdSaveTrans");
    QCOMPARE(cell(Point1, Value1), QStringLiteral("0"));
    QCOMPARE(cell(Total, Value1).toInt(), storedTotal(1));
    QVERIFY(find<QLineEdit>("txtG1").isHidden());
}

void CapturePageTest::failedTotalIsReported()
{
    const int counted = issue(QStringLiteral("Count"), {1}, {1});
    const int answered = issue(QStringLiteral("Yes/No"), {1}, {1});
    issue(QStringLiteral("Count"), {1}, {1});
    const char *const once = "UPDATE tblPMDataMax SET PMCountMax = 8, PMYesMax = 1 "
                             "WHERE PMDataMaxID = (SELECT max(PMDataMaxID) FROM tblPMDataMax);"
                             "CREATE UNIQUE INDEX counts ON tblPMDataMax (PMCountMax) WHERE PMCountMax > 0;"
                             "CREATE UNIQUE INDEX answers ON tblPMDataMax (PMYesMax) WHERE PMYesMax > 0";
    QVERIFY(changeFile(farm_->session.PestDBFile, once));
    const QString reported = QStringLiteral("Blok A, total, Pest 01 could not be saved");
    host_->status.clear();
    capture(counted, QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("8"));
    QCOMPARE(storedCount(Point1, 1), 8);
    QVERIFY(host_->failure.startsWith(reported) && host_->status.isEmpty());
    click("Command4");
    host_->failure.clear();
    capture(answered, QStringLiteral("Blok A"));
    clickCell("grdPest", Point1, Value1);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMYes = True")), 1);
    QVERIFY(host_->failure.startsWith(reported) && host_->status.isEmpty());
}

void CapturePageTest::withoutPestsOnlyHeadingsShow()
{
    const int key = issue(QStringLiteral("Count"), {1}, {});
    capture(key, QStringLiteral("Blok A"));
    FlexGrid &cells = grid("grdPest");
    QVERIFY(cells.Redraw() && cells.updatesEnabled());
    QCOMPARE(cells.Cols(), capture::columnsFor(0));
    QVERIFY(host_->failure.isEmpty());
}

void CapturePageTest::pestNamedTwiceShowsTwice()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1});
    farm_->session.dbPest->Execute(QStringLiteral("INSERT INTO tblPMTarTrans (PMTransID, CTargetID) VALUES (%1, 1)").arg(key));
    capture(key, QStringLiteral("Blok A"));
    QCOMPARE(cell(Point1, Value2), QStringLiteral("0"));
    QCOMPARE(cell(Point1, capture::keyColumn(2)), cell(Point1, capture::keyColumn(1)));
}

void CapturePageTest::emptyRowIsNotEditable()
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

void CapturePageTest::answersToggle()
{
    capture(issue(QStringLiteral("Yes/No"), {1}, {1, 2}), QStringLiteral("Blok A"));
    FlexGrid &cells = grid("grdPest");
    QCOMPARE(cells.TextMatrix(1, Value2), QStringLiteral("Y/N"));
    clickCell("grdPest", Point1, Value2);
    clickCell("grdPest", Point1 + 1, Value2);
    QCOMPARE(cells.CellBackColor(Point1, Value2), std::optional(cellColour::Red));
    QCOMPARE(cells.TextMatrix(Point1, Value2), QString());
    QCOMPARE(cells.Col(), capture::PointColumn);
    QCOMPARE(cell(Total, Value2), QStringLiteral("2"));
    QCOMPARE(storedTotal(2, "PMYesMax"), 2);
    QCOMPARE(storedTotal(1, "PMYesMax"), 0);
    clickCell("grdPest", Point1, Value2);
    QCOMPARE(cells.CellBackColor(Point1, Value2), std::optional(cellColour::White));
    QCOMPARE(storedTotal(2, "PMYesMax"), 1);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMYes = True")), 1);
    // Here too the total can be typed.
    typeInto(Total, Value2, QStringLiteral("9"));
    QCOMPARE(storedTotal(2, "PMYesMax"), 9);
    QCOMPARE(storedTotal(2), 0);
}

void CapturePageTest::answerResetAtTotalZero()
{
    capture(issue(QStringLiteral("Yes/No"), {1}, {1}), QStringLiteral("Blok A"));
    clickCell("grdPest", Point1, Value1);
    typeInto(Total, Value1, QStringLiteral("0"));
    clickCell("grdPest", Point1, Value1);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMYes = True")), 0);
    QCOMPARE(storedTotal(1, "PMYesMax"), 0);
}

void CapturePageTest::firstOfDuplicateRowsShows()
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
    // Two sets of rows now; the first row of point 1 is deleted, point 2 still shows its count.
    QCOMPARE(grid("grdPest").Rows(), Point1 + 3 + 1);
    QCOMPARE(cell(Point1 + 1, Value1), QStringLiteral("6"));
    QCOMPARE(cell(Point1, Value1), QStringLiteral("0"));
}

void CapturePageTest::keysOpenTheEditor()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    FlexGrid &cells = grid("grdPest");
    auto &box = find<QLineEdit>("txtG1");
    cells.setFocus();
    cells.setCell(Point1, Value1);
    QTest::keyClick(&cells, Qt::Key_C, Qt::AltModifier);
    QTest::keyClick(&cells, Qt::Key_4, Qt::ControlModifier);
    QVERIFY(!box.isVisible());
    QTest::keyClick(&cells, Qt::Key_4);
    QVERIFY(box.isVisible());
    QCOMPARE(box.text(), QStringLiteral("4"));
    // Down saves and moves to the next point.
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

void CapturePageTest::editorPassesTheFocusOn_data()
{
    QTest::addColumn<QKeySequence>("keys");
    QTest::addColumn<QString>("next");
    const auto row = [](const char *name, const QKeySequence &keys, const char *next) {
        QTest::newRow(name) << keys << QString::fromLatin1(next);
    };
    row("Enter", Qt::Key_Return, "grdPest");
    row("Tab", Qt::Key_Tab, "txtPMMNotes");
    row("Shift+Tab", Qt::SHIFT | Qt::Key_Backtab, "cmbBlock");
    row("Save", Qt::ALT | Qt::Key_V, "grdPest");
    row("Note", Qt::ALT | Qt::Key_N, "txtPMMNotes");
    row("Block", Qt::ALT | Qt::Key_B, "cmbBlock");
}

void CapturePageTest::editorPassesTheFocusOn()
{
    QFETCH(QKeySequence, keys);
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    clickCell("grdPest", Point1, Value1);
    auto &box = find<QLineEdit>("txtG1");
    QTest::keyClicks(&box, QStringLiteral("7"));
    QTest::keyClick(&box, keys[0].key(), keys[0].keyboardModifiers());
    QTRY_VERIFY(!box.isVisible());
    QCOMPARE(storedCount(Point1, 1), 7);
    QTEST(QApplication::focusWidget()->objectName(), "next");
}

void CapturePageTest::completionIssuesOneSuccessor()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1});
    capture(key, QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("7"));
    find<QLineEdit>("txtPMMNotes").end(false);
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

void CapturePageTest::uncompletedSaveAlsoRepeats()
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

void CapturePageTest::failedRepeatLeavesNothingAndIsIssuedByTheNextSave_data()
{
    QTest::addColumn<QString>("refused");
    QTest::newRow("the instruction") << QStringLiteral("tblPMTrans (PMTransDate)");
    QTest::newRow("its blocks") << QStringLiteral("tblPMBlockTrans (BlockID)");
    QTest::newRow("its pests") << QStringLiteral("tblPMTarTrans (CTargetID)");
    QTest::newRow("its total rows") << QStringLiteral("tblPMDataMax (BlockID, CTargetID)");
}

void CapturePageTest::failedRepeatLeavesNothingAndIsIssuedByTheNextSave()
{
    QFETCH(QString, refused);
    const QStringList tables{"tblPMTrans", "tblPMBlockTrans", "tblPMTarTrans", "tblPMData", "tblPMDataMax"};
    const auto counts = [&] {
        QList<int> all;
        for (const QString &table : tables) {
            all.append(farm_->count(table));
        }
        return all;
    };
    const int key = issue(QStringLiteral("Count"), {2}, {1});
    farm_->session.dbPest->Execute(QStringLiteral("Delete from tblPMDataMax where PMDataMaxID > 1"));
    capture(key, QStringLiteral("Blok B"));
    const QList<int> before = counts();
    const QString file = farm_->session.PestDBFile;
    QVERIFY(changeFile(file, qPrintable(QStringLiteral("CREATE UNIQUE INDEX refused ON ") + refused)));
    for (int save = 0; save < 2; ++save) {
        click("cmdSaveTrans");
        QVERIFY(host_->failure.startsWith(QStringLiteral("The repeated instruction could not be issued")));
        QCOMPARE(counts(), before);
    }
    QVERIFY(changeFile(file, "DROP INDEX refused"));
    for (int save = 0; save < 2; ++save) {
        click("cmdSaveTrans");
        QCOMPARE(farm_->count(QStringLiteral("tblPMTrans")), 2);
    }
    QCOMPARE(farm_->count(QStringLiteral("tblPMData")), 2 * before[3]);
    QCOMPARE(farm_->session.CurrentPMTransID, key);
}

void CapturePageTest::completedRowOpensForCapture()
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

void CapturePageTest::completionDateStaysWhenReopened()
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

void CapturePageTest::shownColumnsArePrinted()
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
    // Hidden columns have no column in the sheet.
    QCOMPARE(reader.Range(QStringLiteral("C5")).value(), QStringLiteral("Pest 02"));
    QCOMPARE(reader.Range(QStringLiteral("C8")).value(), QStringLiteral("Yes"));
    QCOMPARE(reader.Range(QStringLiteral("B8")).value(), QStringLiteral(" "));
    QCOMPARE(reader.Range(QStringLiteral("A2")).value(), QStringLiteral("Block :  Blok A"));
}

QTEST_MAIN(CapturePageTest)
#include "CapturePageTest.moc"
