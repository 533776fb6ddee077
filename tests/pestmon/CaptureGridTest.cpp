// SPDX-License-Identifier: GPL-3.0-or-later
#include "PestMonScreen.h"

/// The findings of a block: counts, answers and their totals.
class CaptureGridTest : public PestMonScreen
{
    Q_OBJECT

private Q_SLOTS:
    void countsAreSavedWhenLeft();
    void totalIsARunningSum();
    void typedTotalIsTheBase();
    void withoutPestsOnlyHeadingsShow();
    void pestNamedTwiceShowsTwice();
    void answersToggle();
    void answerResetAtTotalZero();
    void firstOfDuplicateRowsShows();
    void blockOpensOnTheFirstPoint();
};

void CaptureGridTest::countsAreSavedWhenLeft()
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

void CaptureGridTest::totalIsARunningSum()
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

void CaptureGridTest::typedTotalIsTheBase()
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

void CaptureGridTest::withoutPestsOnlyHeadingsShow()
{
    const int key = issue(QStringLiteral("Count"), {1}, {});
    capture(key, QStringLiteral("Blok A"));
    FlexGrid &cells = grid("grdPest");
    QVERIFY(cells.Redraw() && cells.updatesEnabled());
    QCOMPARE(cells.Cols(), capture::columnsFor(0));
    QVERIFY(host_->failure.isEmpty());
}

void CaptureGridTest::pestNamedTwiceShowsTwice()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1});
    farm_->session.dbPest->Execute(QStringLiteral("INSERT INTO tblPMTarTrans (PMTransID, CTargetID) VALUES (%1, 1)").arg(key));
    capture(key, QStringLiteral("Blok A"));
    QCOMPARE(cell(Point1, Value2), QStringLiteral("0"));
    QCOMPARE(cell(Point1, capture::keyColumn(2)), cell(Point1, capture::keyColumn(1)));
}

void CaptureGridTest::answersToggle()
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

void CaptureGridTest::answerResetAtTotalZero()
{
    capture(issue(QStringLiteral("Yes/No"), {1}, {1}), QStringLiteral("Blok A"));
    clickCell("grdPest", Point1, Value1);
    typeInto(Total, Value1, QStringLiteral("0"));
    clickCell("grdPest", Point1, Value1);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMYes = True")), 0);
    QCOMPARE(storedTotal(1, "PMYesMax"), 0);
}

void CaptureGridTest::firstOfDuplicateRowsShows()
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

void CaptureGridTest::blockOpensOnTheFirstPoint()
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

QTEST_MAIN(CaptureGridTest)
#include "CaptureGridTest.moc"
