// SPDX-License-Identifier: GPL-3.0-or-later
#include "PestMonScreen.h"

#include <QAbstractItemView>
#include <QDir>

/// Completion, repeat and the printed sheet of an instruction.
class CapturePageTest : public PestMonScreen
{
    Q_OBJECT

private Q_SLOTS:
    void shownColumnsArePrinted();
    void completionIssuesOneSuccessor();
    void keysGoToTheCellsOfABlockChosenInTheList();
    void uncompletedSaveAlsoRepeats();
    void failedRepeatLeavesNothingAndIsIssuedByTheNextSave_data();
    void failedRepeatLeavesNothingAndIsIssuedByTheNextSave();
    void completedRowOpensForCapture();
    void completionDateStaysWhenReopened();
};

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

void CapturePageTest::keysGoToTheCellsOfABlockChosenInTheList()
{
    const int key = issue(QStringLiteral("Count"), {1, 2}, {1});
    capture(key, QStringLiteral("Blok A"));
    auto &block = find<controls::ItemCombo>("cmbBlock");
    block.setFocus();
    QTest::keyClick(&block, Qt::Key_Space);
    QTRY_VERIFY(block.view()->isVisible());
    QTest::keyClick(block.view(), Qt::Key_Down);
    QTest::keyClick(block.view(), Qt::Key_Return);
    QTRY_COMPARE(QApplication::focusWidget(), &find<controls::FlexGrid>("grdPest"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_7);
    QCOMPARE(find<QLineEdit>("txtG1").text(), QStringLiteral("7"));
    QCOMPARE(block.ListIndex(), 1);
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
    QTest::addColumn<QString>("table");
    QTest::addColumn<QStringList>("unique");
    QTest::newRow("the instruction") << "tblPMTrans" << QStringList{"PMTransDate"};
    QTest::newRow("its blocks") << "tblPMBlockTrans" << QStringList{"BlockID"};
    QTest::newRow("its pests") << "tblPMTarTrans" << QStringList{"CTargetID"};
    QTest::newRow("its total rows") << "tblPMDataMax" << QStringList{"BlockID", "CTargetID"};
}

void CapturePageTest::failedRepeatLeavesNothingAndIsIssuedByTheNextSave()
{
    QFETCH(QString, table);
    QFETCH(QStringList, unique);
    const QStringList tables{"tblPMTrans", "tblPMBlockTrans", "tblPMTarTrans", "tblPMData", "tblPMDataMax"};
    const auto counts = [&] {
        QList<int> all;
        for (const QString &one : tables) {
            all.append(farm_->count(one));
        }
        return all;
    };
    const int key = issue(QStringLiteral("Count"), {2}, {1});
    farm_->session.dbPest->Execute(QStringLiteral("Delete from tblPMDataMax where PMDataMaxID > 1"));
    capture(key, QStringLiteral("Blok B"));
    const QList<int> before = counts();
    const dao::Index refused{QStringLiteral("refused"), {unique.begin(), unique.end()}, false, true};
    farm_->session.dbPest->Append(table, refused);
    for (int save = 0; save < 2; ++save) {
        click("cmdSaveTrans");
        QVERIFY(host_->failure.startsWith(QStringLiteral("The repeated instruction could not be issued")));
        QCOMPARE(counts(), before);
    }
    const auto indexes = farm_->session.dbPest->tableDef(table).Indexes();
    const auto added = std::find_if(indexes.begin(), indexes.end(), [&](const dao::Index &index) {
        return index.unique && !index.primary && index.fields == refused.fields;
    });
    farm_->session.dbPest->removeIndex(table, added->name);
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
