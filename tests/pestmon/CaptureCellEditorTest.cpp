// SPDX-License-Identifier: GPL-3.0-or-later
#include "DamagedFile.h"
#include "PestMonScreen.h"

#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"

#include <QGroupBox>

/// The editor of one cell: what it accepts, the keys, and what a failed write leaves.
class CaptureCellEditorTest : public PestMonScreen
{
    Q_OBJECT

private Q_SLOTS:
    void textBecomesItsNumber();
    void overflowStaysInTheEditor();
    void failedWriteLeavesTheEditorOpen();
    void discardedValueIsNotShown();
    void failedTotalIsReported();
    void emptyRowIsNotEditable();
    void keysOpenTheEditor();
    void keysMoveFromCellToCell_data();
    void keysMoveFromCellToCell();
    void movingOverACellWritesNothing();
    void wholeSheetTakesTwoKeysPerCount();
    void escapeRestoresTheCell();
    void deleteOpensTheEditorEmpty();
    void editorPassesTheFocusOn_data();
    void editorPassesTheFocusOn();
};

void CaptureCellEditorTest::textBecomesItsNumber()
{
    capture(issue(QStringLiteral("Count"), {1}, {1}), QStringLiteral("Blok A"));
    typeInto(Point1, Value1, QStringLiteral("12ab"));
    QCOMPARE(storedCount(Point1, 1), 12);
    typeInto(Point1, Value1, QStringLiteral("abc"));
    QCOMPARE(storedCount(Point1, 1), 0);
    QCOMPARE(storedTotal(1), 0);
}

void CaptureCellEditorTest::overflowStaysInTheEditor()
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

void CaptureCellEditorTest::failedWriteLeavesTheEditorOpen()
{
    if (TemporaryFarm::kind() == dao::FileKind::Jet) {
        QSKIP("the write is made to fail through SQLite");
    }
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

void CaptureCellEditorTest::discardedValueIsNotShown()
{
    if (TemporaryFarm::kind() == dao::FileKind::Jet) {
        QSKIP("the write is made to fail through SQLite");
    }
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
    QTest::keyClick(&find<QLineEdit>("txtG1"), Qt::Key_Escape);
    QCOMPARE(cell(Point1, Value1), QStringLiteral("0"));
    QCOMPARE(cell(Total, Value1).toInt(), storedTotal(1));
    typeInto(Point1, Value1, QStringLiteral("8"));
    host_->dialogs().queueAnswer(Answer::Yes);
    click("cmdSaveTrans");
    QCOMPARE(cell(Point1, Value1), QStringLiteral("0"));
    QCOMPARE(cell(Total, Value1).toInt(), storedTotal(1));
    QVERIFY(find<QLineEdit>("txtG1").isHidden());
}

void CaptureCellEditorTest::failedTotalIsReported()
{
    if (TemporaryFarm::kind() == dao::FileKind::Jet) {
        QSKIP("the write is made to fail through SQLite");
    }
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

void CaptureCellEditorTest::emptyRowIsNotEditable()
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

void CaptureCellEditorTest::keysOpenTheEditor()
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

void CaptureCellEditorTest::keysMoveFromCellToCell_data()
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

void CaptureCellEditorTest::keysMoveFromCellToCell()
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

void CaptureCellEditorTest::movingOverACellWritesNothing()
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

void CaptureCellEditorTest::wholeSheetTakesTwoKeysPerCount()
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

void CaptureCellEditorTest::escapeRestoresTheCell()
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

void CaptureCellEditorTest::deleteOpensTheEditorEmpty()
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

void CaptureCellEditorTest::editorPassesTheFocusOn_data()
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

void CaptureCellEditorTest::editorPassesTheFocusOn()
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

QTEST_MAIN(CaptureCellEditorTest)
#include "CaptureCellEditorTest.moc"
