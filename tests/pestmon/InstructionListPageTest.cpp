// SPDX-License-Identifier: GPL-3.0-or-later
#include "PestMonScreen.h"
#include "platform/basic/Formats.h"

#include <QClipboard>

class InstructionListPageTest : public PestMonScreen
{
    Q_OBJECT

private Q_SLOTS:
    void emptyPeriodSelectsNothing();
    void tabFollowsTheLayout();
    void listShowsAndFilters();
    void selectionMovesByMouseAndKey();
    void deleteRemovesOneRowAtOnce();
    void periodStartIsStored();
    void activationShowsOpenOnes();
    void activationIsPostponedWhileATabIsOpen();
    void rowClickedAfterADateIsSelected();
    void dateTypedBeforeAddDoesNotAffectTheNewOne();

    void keysActOnTheList();
    void emptyListGivesTheReason();

private:
    /// Issued on the 2nd of January, February and March, with the keys 1, 2 and 3.
    void addMonthly();
    void typeDate(const char *picker, const QString &date);
};

void InstructionListPageTest::addMonthly()
{
    for (int month = 1; month <= 3; ++month) {
        farm_->addInstruction({.issued = QDate(2026, month, 2), .notes = QStringLiteral("of month %1").arg(month)});
    }
    click("chkNComplete");
}

void InstructionListPageTest::typeDate(const char *picker, const QString &date)
{
    auto &field = find<controls::DatePicker>(picker);
    field.setFocus(Qt::TabFocusReason);
    QTest::keyClicks(&field, date);
}

void InstructionListPageTest::emptyPeriodSelectsNothing()
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

void InstructionListPageTest::tabFollowsTheLayout()
{
    QCOMPARE(tabOrder("Command1"),
             QStringLiteral("Command1 chkComplete dtpDateFrom dtpDateTo grdGS cmdAdd cmdEdit cmdComp cmdPdel"));
    screen_->setFocus();
    QVERIFY(grid("grdGS").hasFocus());
}

void InstructionListPageTest::listShowsAndFilters()
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
    // By date; an unknown method and a revoked completion show empty.
    QCOMPARE(list.TextMatrix(1, 7), QStringLiteral("reopened"));
    QCOMPARE(list.TextMatrix(1, 6), QString());
    QCOMPARE(list.TextMatrix(1, 4), QString());
    QCOMPARE(list.TextMatrix(1, 8), QStringLiteral("True"));
    QVERIFY(!list.CellBackColor(1, 7).has_value());
    QCOMPARE(list.TextMatrix(2, 3), QStringLiteral("Yes"));
    QCOMPARE(list.TextMatrix(2, 4), basic::shortDate(QDate(2026, 2, 5)));
    QCOMPARE(list.CellBackColor(2, 7), std::optional(cellColour::Green));
    QCOMPARE(list.cellDescription(2, 7),
             QStringLiteral("Instruction of %1, Notes, done, completed").arg(basic::shortDate(QDate(2026, 2, 3))));
    QCOMPARE(list.cellDescription(1, 3), QStringLiteral("Instruction of %1, Done, No").arg(basic::shortDate(QDate(2026, 2, 2))));
    QVERIFY(find<QPushButton>("cmdComp").isVisible());
    click("chkComplete");
    QCOMPARE(list.Rows(), 3);
    QVERIFY(find<QPushButton>("cmdComp").isHidden());
    click("chkNComplete");
    QCOMPARE(list.Rows(), 3);
    QVERIFY(find<QPushButton>("cmdComp").isVisible());
    QCOMPARE(farm_->session.ListRow, 1);
}

void InstructionListPageTest::selectionMovesByMouseAndKey()
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

void InstructionListPageTest::deleteRemovesOneRowAtOnce()
{
    const int first = issue(QStringLiteral("Count"), {1}, {1});
    issue(QStringLiteral("Count"), {1}, {1});
    select(first);
    click("cmdPdel");
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 1);
    // Its findings remain.
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMTransID = %1").arg(first)), 3);
    QCOMPARE(farm_->session.ListRow, 1);
    QVERIFY(farm_->session.CurrentPMTransID != first);
}

void InstructionListPageTest::periodStartIsStored()
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

void InstructionListPageTest::activationShowsOpenOnes()
{
    issue(QStringLiteral("Count"), {1}, {1});
    click("chkComplete");
    QCOMPARE(grid("grdGS").Rows(), 2);
    screen_->activateScreen();
    QCOMPARE(grid("grdGS").Rows(), 3);
    QVERIFY(find<QRadioButton>("chkComplete").isChecked());
    // Without a remembered row the empty last row is selected.
    farm_->session.ListRow = 0;
    screen_->activateScreen();
    QCOMPARE(grid("grdGS").Row(), 2);
    QCOMPARE(farm_->session.CurrentPMTransID, 0);
}

void InstructionListPageTest::activationIsPostponedWhileATabIsOpen()
{
    click("cmdAdd");
    clickCell("grdBlockIn", 1, BlockMark);
    farm_->session.FilterAll = true;
    screen_->activateScreen();
    QCOMPARE(grid("grdBlockIn").CellBackColor(1, BlockMark), std::optional(cellColour::Yellow));
    QVERIFY(farm_->session.FilterAll);
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
    QVERIFY(!farm_->session.FilterAll);
}

void InstructionListPageTest::rowClickedAfterADateIsSelected()
{
    addMonthly();
    typeDate("dtpDateFrom", QStringLiteral("20260201"));
    clickCell("grdGS", 1, 7);
    FlexGrid &list = grid("grdGS");
    QCOMPARE(list.TextMatrix(1, 7), QStringLiteral("of month 2"));
    QVERIFY(list.CellFontBold(1, 7) && !list.CellFontBold(2, 7));
    QCOMPARE(list.Row(), 1);
    QCOMPARE(farm_->session.CurrentPMTransID, 2);
    click("cmdPdel");
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans where PMTransID = 2")), 0);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 2);
}

void InstructionListPageTest::dateTypedBeforeAddDoesNotAffectTheNewOne()
{
    addMonthly();
    typeDate("dtpDateFrom", QStringLiteral("20260201"));
    QTest::keyClick(&find<controls::DatePicker>("dtpDateFrom"), Qt::Key_A, Qt::AltModifier);
    QTRY_VERIFY(find<QTabWidget>("tabBlock").isVisible());
    QCOMPARE(farm_->session.CurrentPMTransID, 0);
    QCOMPARE(farm_->session.CurrentSDate, QStringLiteral("2026/02/01"));
    // Nor does a change of the period behind the tab.
    find<controls::DatePicker>("dtpDateTo").choose(QDate(2026, 3, 1));
    choose("cmbPMethod", QStringLiteral("Count"));
    choose("cmbPerson", QStringLiteral("Anna"));
    typeDate("dtpPestM", QStringLiteral("4/6/2026"));
    expectMessage();
    QTest::keyClick(&find<controls::DatePicker>("dtpPestM"), Qt::Key_V, Qt::AltModifier);
    QTRY_COMPARE(farm_->session.CurrentPMTransID, 4);
    QCOMPARE(host_->objPestMON().Get_PMTrans(4).date("PMTransDate")->date(), QDate(2026, 6, 4));
    click("cmdTCancel");
    QCOMPARE(grid("grdGS").Rows(), 3);
}

void InstructionListPageTest::keysActOnTheList()
{
    const int first = issue(QStringLiteral("Count"), {1}, {1});
    issue(QStringLiteral("Count"), {1}, {1});
    select(first);
    FlexGrid &list = grid("grdGS");
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F2, Qt::Key_Insert}) {
        list.setFocus();
        QTest::keyClick(&list, key);
        QVERIFY(find<QTabWidget>("tabBlock").isVisible());
        QCOMPARE(farm_->session.CurrentPMTransID, key == Qt::Key_Insert ? 0 : first);
        if (key == Qt::Key_Insert) {
            host_->dialogs().queueAnswer(Answer::No);
        }
        click("cmdTCancel");
    }
    select(first);
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    const QString row = QGuiApplication::clipboard()->text();
    QVERIFY2(row.endsWith(QStringLiteral("\tNo\t\tAnna\tCount\tNA\tTrue")), qPrintable(row));
    QTest::keyClick(&list, Qt::Key_Delete);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans where PMTransID = %1").arg(first)), 0);
}

void InstructionListPageTest::emptyListGivesTheReason()
{
    FlexGrid &list = grid("grdGS");
    QVERIFY(list.emptyText().contains(QStringLiteral("press Add")));
    for (const char *button : {"cmdComp", "cmdEdit", "cmdPdel"}) {
        host_->note.clear();
        click(button);
        QVERIFY2(host_->note.contains(QStringLiteral("Select an instruction")), button);
    }
    click("chkComplete");
    QVERIFY(list.emptyText().contains(QStringLiteral("completed")));
    issue(QStringLiteral("Count"), {1}, {1});
    click("chkNComplete");
    QCOMPARE(list.emptyText(), QString());
}

QTEST_MAIN(InstructionListPageTest)
#include "InstructionListPageTest.moc"
