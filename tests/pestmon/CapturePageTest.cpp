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
    void blockOpensOnTheFirstPoint();
    void keysMoveFromCellToCell_data();
    void keysMoveFromCellToCell();
    void movingOverACellWritesNothing();
    void wholeSheetTakesTwoKeysPerCount();
    void escapeRestoresTheCell();
    void deleteOpensTheEditorEmpty();
    void undoAndRedoRestoreCellAndTotal();
    void undoOfAnswersAndTypedTotals();
    void undoEndsWithTheBlock();
    void failedWriteShowsWhatIsStored();
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
    QCOMPARE(cell(Total, Value1), QStringLiteral("0"));
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

void CapturePageTest::blockOpensOnTheFirstPoint()
{
    capture(issue(QStringLiteral("Count"), {1, 3}, {1}), QStringLiteral("Blok A"));
    for (const char *block : {"Blok C", "Blok A"}) {
        choose("cmbBlock", QLatin1String(block));
        grid("grdPest").setFocus();
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("5"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(storedCount(Point1, 1), 5);
        QCOMPARE(storedTotal(1), 5);
    }
}

void CapturePageTest::keysMoveFromCellToCell_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("held");
    QTest::addColumn<QPoint>("from"); // column, row
    QTest::addColumn<QPoint>("to");
    const auto row = [](const char *name, Qt::Key key, QPoint from, QPoint to, Qt::KeyboardModifiers held = {}) {
        QTest::newRow(name) << int(key) << held << from << to;
    };
    constexpr int last = Point1 + 2;
    row("Tab", Qt::Key_Tab, {Value1, Point1}, {Value2, Point1});
    row("Tab at the end of a row", Qt::Key_Tab, {Value2, Point1}, {Value1, Point1 + 1});
    row("Tab in the totals", Qt::Key_Tab, {Value2, Total}, {Value1, Point1});
    row("Tab in the last cell", Qt::Key_Tab, {Value2, last}, {Value2, last});
    row("Shift+Tab", Qt::Key_Backtab, {Value1, last}, {Value2, Point1 + 1}, Qt::ShiftModifier);
    row("Shift+Tab in the first cell", Qt::Key_Backtab, {Value1, Point1}, {Value1, Point1}, Qt::ShiftModifier);
    row("plus of the number pad", Qt::Key_Plus, {Value1, Point1}, {Value2, Point1}, Qt::KeypadModifier);
    row("Right", Qt::Key_Right, {Value1, Point1}, {Value2, Point1});
    row("Left", Qt::Key_Left, {Value2, Point1}, {Value2, Point1});
}

void CapturePageTest::keysMoveFromCellToCell()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, held);
    QFETCH(QPoint, from);
    QFETCH(QPoint, to);
    capture(issue(QStringLiteral("Count"), {1}, {1, 2}), QStringLiteral("Blok A"));
    FlexGrid &cells = grid("grdPest");
    auto &box = find<QLineEdit>("txtG1");
    cells.setFocus();
    cells.setCell(from.y(), from.x());
    QTest::keyClick(&cells, Qt::Key_7);
    QTest::keyClick(&box, static_cast<Qt::Key>(key), held);
    QCOMPARE(QPoint(cells.Col(), cells.Row()), to);
    const bool left = key != Qt::Key_Left;
    QCOMPARE(cell(from.y(), from.x()), left ? QStringLiteral("7") : QStringLiteral("0"));
    // A typed text has one end only; at its beginning Left moves on.
    if (!left) {
        QTest::keyClick(&box, Qt::Key_Left);
        QCOMPARE(QPoint(cells.Col(), cells.Row()), QPoint(Value1, Point1));
        QCOMPARE(storedCount(Point1, 2), 7);
    }
    QCOMPARE(box.isVisible(), from != to || !left);
    QVERIFY(box.hasFocus() || cells.hasFocus());
    QCOMPARE(find<QLineEdit>("txtPMMNotes").text(), QStringLiteral("NA"));
}

void CapturePageTest::movingOverACellWritesNothing()
{
    capture(issue(QStringLiteral("Count"), {1}, {1, 2}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("7"));
    host_->status.clear();
    FlexGrid &cells = grid("grdPest");
    QTest::keyClick(&cells, Qt::Key_Return);
    auto &box = find<QLineEdit>("txtG1");
    QTest::keyClick(&box, Qt::Key_Tab);
    host_->status.clear();
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Right, Qt::Key_Left, Qt::Key_Backtab}) {
        QTest::keyClick(&box, key);
        QVERIFY(box.isVisible());
    }
    QCOMPARE(QPoint(cells.Col(), cells.Row()), QPoint(Value2, Point1));
    QCOMPARE(host_->status, QString());
    QCOMPARE(storedTotal(1), 7);
}

void CapturePageTest::wholeSheetTakesTwoKeysPerCount()
{
    capture(issue(QStringLiteral("Count"), {1}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}), QStringLiteral("Blok A"));
    grid("grdPest").setFocus();
    int keys = 0;
    const auto press = [&keys](Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        ++keys;
    };
    // Of ten cells three are 0, as a scout's sheet reads.
    for (int index = 0; index < 30; ++index) {
        if (index % 10 < 7) {
            press(static_cast<Qt::Key>(Qt::Key_1 + index % 9));
        }
        press(Qt::Key_Tab);
    }
    QCOMPARE(keys, 30 + 21);
    for (int index = 0; index < 30; ++index) {
        const int expected = index % 10 < 7 ? 1 + index % 9 : 0;
        QCOMPARE(storedCount(Point1 + index / 10, 1 + index % 10), expected);
    }
}

void CapturePageTest::escapeRestoresTheCell()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("7"));
    FlexGrid &cells = grid("grdPest");
    QTest::keyClick(&cells, Qt::Key_9);
    QTest::keyClick(&find<QLineEdit>("txtG1"), Qt::Key_Escape);
    QVERIFY(!find<QLineEdit>("txtG1").isVisible());
    QVERIFY(cells.hasFocus());
    QCOMPARE(cell(Point1, Value1), QStringLiteral("7"));
    QCOMPARE(storedCount(Point1, 1), 7);
    QCOMPARE(storedTotal(1), 7);
}

void CapturePageTest::deleteOpensTheEditorEmpty()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Backspace}) {
        typeInto(Point1, Value1, QStringLiteral("7"));
        QTest::keyClick(&grid("grdPest"), key);
        auto &box = find<QLineEdit>("txtG1");
        QVERIFY(box.isVisible());
        QCOMPARE(box.text(), QString());
        QTest::keyClick(&box, Qt::Key_Return);
        QCOMPARE(cell(Point1, Value1), QStringLiteral("0"));
        QCOMPARE(storedCount(Point1, 1), 0);
    }
}

void CapturePageTest::undoAndRedoRestoreCellAndTotal()
{
    capture(issue(QStringLiteral("Count"), {1}, {1, 2}), QStringLiteral("Blok A"));
    FlexGrid &cells = grid("grdPest");
    const auto press = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key, Qt::ControlModifier); };
    typeInto(Point1, Value1, QStringLiteral("3"));
    typeInto(Point1, Value1, QStringLiteral("8"));
    typeInto(Point1 + 1, Value1, QStringLiteral("2"));
    press(Qt::Key_Z);
    QCOMPARE(storedCount(Point1 + 1, 1), 0);
    QCOMPARE(host_->status, QStringLiteral("Undone: Blok A, point 2, Pest 01 = 0, total 8"));
    press(Qt::Key_Z);
    QCOMPARE(cell(Point1, Value1), QStringLiteral("3"));
    QCOMPARE(QPoint(cells.Col(), cells.Row()), QPoint(Value1, Point1));
    QCOMPARE(storedCount(Point1, 1), 3);
    QCOMPARE(storedTotal(1), 3);
    press(Qt::Key_Y);
    QCOMPARE(storedCount(Point1, 1), 8);
    QCOMPARE(storedTotal(1), 8);
    QCOMPARE(host_->status, QStringLiteral("Redone: Blok A, point 1, Pest 01 = 8, total 8"));
    // In an editor with nothing typed too; with something typed Ctrl+Z belongs to the text.
    QTest::keyClick(&cells, Qt::Key_Return);
    auto &box = find<QLineEdit>("txtG1");
    QTest::keyClick(&box, Qt::Key_5);
    press(Qt::Key_Z);
    QVERIFY(box.isVisible());
    QCOMPARE(box.text(), QStringLiteral("8"));
    press(Qt::Key_Z);
    QVERIFY(!box.isVisible());
    QCOMPARE(storedCount(Point1, 1), 3);
    // A new value ends what could be redone.
    typeInto(Point1, Value2, QStringLiteral("1"));
    press(Qt::Key_Y);
    QCOMPARE(storedCount(Point1, 1), 3);
    for (int time = 0; time < 4; ++time) {
        press(Qt::Key_Z);
    }
    QCOMPARE(storedTotal(1), 0);
    QCOMPARE(storedTotal(2), 0);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMCount <> 0")), 0);
}

void CapturePageTest::undoOfAnswersAndTypedTotals()
{
    capture(issue(QStringLiteral("Yes/No"), {1}, {1}), QStringLiteral("Blok A"));
    FlexGrid &cells = grid("grdPest");
    cells.setFocus();
    QTest::keyClick(&cells, Qt::Key_Space);
    QCOMPARE(cells.CellBackColor(Point1, Value1), std::optional(cellColour::Red));
    typeInto(Total, Value1, QStringLiteral("0"));
    QTest::keyClick(&cells, Qt::Key_Down);
    QTest::keyClick(&cells, Qt::Key_F2);
    QCOMPARE(cells.CellBackColor(Point1, Value1), std::optional(cellColour::White));
    QCOMPARE(storedTotal(1, "PMYesMax"), 0);
    const auto undo = [&] { QTest::keyClick(&cells, Qt::Key_Z, Qt::ControlModifier); };
    undo();
    QCOMPARE(cells.CellBackColor(Point1, Value1), std::optional(cellColour::Red));
    QCOMPARE(storedTotal(1, "PMYesMax"), 0);
    QVERIFY(host_->status.startsWith(QStringLiteral("Undone: Blok A, point 1, Pest 01 = Yes")));
    undo();
    QCOMPARE(storedTotal(1, "PMYesMax"), 1);
    QCOMPARE(host_->status, QStringLiteral("Undone: Blok A, total, Pest 01 = 1"));
    undo();
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMYes = True")), 0);
    QCOMPARE(storedTotal(1, "PMYesMax"), 0);
}

void CapturePageTest::undoEndsWithTheBlock()
{
    capture(issue(QStringLiteral("Count"), {1, 3}, {1}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("3"));
    choose("cmbBlock", QStringLiteral("Blok C"));
    choose("cmbBlock", QStringLiteral("Blok A"));
    host_->status.clear();
    grid("grdPest").setFocus();
    QTest::keyClick(&grid("grdPest"), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(storedCount(Point1, 1), 3);
    QCOMPARE(host_->status, QString());
}

void CapturePageTest::failedWriteShowsWhatIsStored()
{
    const int answered = issue(QStringLiteral("Yes/No"), {1}, {1});
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    typeInto(Total, Value1, QStringLiteral("40"));
    // A spare row has the values already, so that a second such row is refused.
    const auto refuse = [this](bool refused) {
        const char *const add = "UPDATE tblPMDataMax SET PMCountMax = 77, PMYesMax = 1 WHERE PMDataMaxID = 6;"
                                "UPDATE tblPMData SET PMYes = 1 WHERE PMDataID = 6;"
                                "CREATE UNIQUE INDEX counts ON tblPMDataMax (PMCountMax) WHERE PMCountMax = 77;"
                                "CREATE UNIQUE INDEX answers ON tblPMDataMax (PMYesMax) WHERE PMYesMax > 0;"
                                "CREATE UNIQUE INDEX points ON tblPMData (abs(PMYes)) WHERE PMYes <> 0";
        QVERIFY(
            changeFile(farm_->session.PestDBFile, refused ? add : "DROP INDEX counts; DROP INDEX answers; DROP INDEX points"));
    };
    host_->status.clear();
    refuse(true);
    typeInto(Total, Value1, QStringLiteral("77"));
    QVERIFY(!find<QLineEdit>("txtG1").isVisible());
    QCOMPARE(cell(Total, Value1), QStringLiteral("40"));
    QVERIFY2(host_->failure.startsWith(QStringLiteral("Blok A, total, Pest 01 could not be saved")), qPrintable(host_->failure));
    click("Command4");
    capture(answered, QStringLiteral("Blok A"));
    host_->status.clear();
    clickCell("grdPest", Point1, Value1);
    QCOMPARE(grid("grdPest").CellBackColor(Point1, Value1), std::optional(cellColour::White));
    QCOMPARE(cell(Total, Value1), QStringLiteral("0"));
    QCOMPARE(host_->status, QString());
    refuse(false);
    clickCell("grdPest", Point1, Value1);
    QCOMPARE(cell(Total, Value1), QStringLiteral("1"));
    QCOMPARE(storedTotal(1, "PMYesMax"), 1);
}

void CapturePageTest::editorPassesTheFocusOn_data()
{
    QTest::addColumn<QKeySequence>("keys");
    QTest::addColumn<QString>("next");
    const auto row = [](const char *name, const QKeySequence &keys, const char *next) {
        QTest::newRow(name) << keys << QString::fromLatin1(next);
    };
    row("Enter", Qt::Key_Return, "grdPest");
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
