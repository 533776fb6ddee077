// SPDX-License-Identifier: GPL-3.0-or-later
#include "PestMonScreen.h"

#include <QProgressBar>

class InstructionEditorPageTest : public PestMonScreen
{
    Q_OBJECT

private Q_SLOTS:
    void newInstructionStartsClean();
    void saveAsksForPersonThenMethod();
    void saveStoresAndShowsPrint();
    void closingUnsavedAsks();
    void unselectingABlockOfASavedOneActsAtOnce();
    void pestTypeNarrowsTheView();
    void allPaintsWithoutSelecting();
    void lettersFindABlock();
    void gridsAreNear();
    void dateRewritesTheWeekAlone();
    void personOutsideTheListIsPreserved();
    void limitsAreReported();
    void tooManyPestsAskFirst();
    void savedInstructionIsPrinted_data();
    void savedInstructionIsPrinted();
};

void InstructionEditorPageTest::newInstructionStartsClean()
{
    // A choice left in the working tables is discarded.
    host_->objPestMON().New_Add_Block_for_Instruction(1, 3);
    host_->objPestMON().New_Add_Pest_for_Instruction(3);
    farm_->session.CurrentPMCom = true;
    click("cmdAdd");
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTBlock")), 0);
    QCOMPARE(find<QLineEdit>("txtWeekNo").text(), QStringLiteral("18"));
    QVERIFY(find<QCheckBox>("chkRepeat").isChecked());
    QCOMPARE(find<ItemCombo>("cmbPerson").Text(), QString());
    // Neither the inactive block nor a worker without nickname is listed.
    QCOMPARE(grid("grdBlockIn").Rows(), 5);
    QCOMPARE(grid("grdBlockIn").cellDescription(1, BlockMark), QStringLiteral("Blok A, not selected"));
    clickCell("grdBlockIn", 1, BlockMark);
    QCOMPARE(grid("grdBlockIn").cellDescription(1, BlockMark), QStringLiteral("Blok A, selected"));
    QCOMPARE(grid("grdBlockIn").cellDescription(1, 3), QStringLiteral("Blok A, Points, 3"));
    QCOMPARE(grid("grdBlockIn").cellDescription(4, BlockMark), QString());
    QCOMPARE(find<ItemCombo>("cmbPerson").ListCount(), 1);
    QCOMPARE(find<QTabWidget>("tabBlock").isTabEnabled(0), false);
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTrans")), 0);
}

void InstructionEditorPageTest::saveAsksForPersonThenMethod()
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

void InstructionEditorPageTest::saveStoresAndShowsPrint()
{
    // Block B has no points and gets 5.
    const int key = issue(QStringLiteral("Yes/No"), {1, 2}, {2, 5});
    QCOMPARE(
        farm_->number(QStringLiteral("Select NoofMpoints from tblPMBlockTrans where PMTransID = %1 and BlockID = 2").arg(key)),
        5);
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMData where PMTransID = %1").arg(key)), 16);
    const dao::Recordset saved = host_->objPestMON().Get_PMTrans(key);
    QCOMPARE(saved.text("PMNotes"), QStringLiteral("NA"));
    QCOMPARE(saved.longValue("PMMethodID"), 2);
    QVERIFY(saved.boolean("PMRepeat"));
    // The message of a page does not outlive it.
    QCOMPARE(host_->status, QString());
    // When reopened it counts as saved until something changes.
    select(key);
    click("cmdEdit");
    QVERIFY(find<QPushButton>("cmdPALL").isVisible());
    QCOMPARE(find<QLabel>("lblMethod_1").text(), QStringLiteral("Select Blocks (2 Selected)"));
    QTest::keyClicks(&find<QLineEdit>("txtPMNotes"), QStringLiteral("x"));
    QVERIFY(find<QPushButton>("cmdPALL").isHidden());
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
    QCOMPARE(host_->objPestMON().Get_PMTrans(key).text("PMNotes"), QStringLiteral("NA"));
    click("cmdEdit");
    expectMessage();
    click("cmdTSave");
    QVERIFY(!host_->status.isEmpty());
}

void InstructionEditorPageTest::closingUnsavedAsks()
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

void InstructionEditorPageTest::unselectingABlockOfASavedOneActsAtOnce()
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

void InstructionEditorPageTest::pestTypeNarrowsTheView()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1, 4});
    select(key);
    click("cmdEdit");
    choose("cmbTPest", QStringLiteral("Weeds"));
    QCOMPARE(grid("grdPestIn").Rows(), 5 + 2);
    // Pest 4 is a weed and selected; pest 1 is filtered out and stays selected.
    QCOMPARE(grid("grdPestIn").CellBackColor(1, PestMark), std::optional(cellColour::Yellow));
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTPest")), 2);
    click("cmdTCancel");
    // In an unsaved one a selected pest that is listed again is deselected, one filtered out stays selected.
    click("cmdAdd");
    clickCell("grdPestIn", 1, PestMark);
    clickCell("grdPestIn", 4, PestMark);
    choose("cmbTPest", QStringLiteral("Weeds"));
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTPest")), 1);
    QCOMPARE(farm_->number(QStringLiteral("Select CTargetID from tblPMTPest")), 1);
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
}

void InstructionEditorPageTest::allPaintsWithoutSelecting()
{
    click("cmdAdd");
    click("chkSelectPest");
    const FlexGrid &pests = grid("grdPestIn");
    QCOMPARE(pests.TextMatrix(20, PestMark), QStringLiteral("+"));
    QCOMPARE(pests.CellBackColor(20, PestMark), std::optional(cellColour::Yellow));
    QVERIFY(!pests.CellBackColor(21, PestMark).has_value());
    QCOMPARE(farm_->countOf(QStringLiteral("Select * from tblPMTPest")), 0);
    QCOMPARE(host_->note, QStringLiteral("All pests shown are marked; the selection is unchanged: 0 selected"));
    click("chkSelectPest");
    QCOMPARE(pests.TextMatrix(20, PestMark), QString());
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
}

void InstructionEditorPageTest::lettersFindABlock()
{
    click("cmdAdd");
    FlexGrid &blocks = grid("grdBlockIn");
    blocks.setFocus();
    blocks.setCell(1, BlockMark);
    QTest::keyClicks(&blocks, QStringLiteral("blok c"));
    QCOMPARE(blocks.Row(), 3);
    QTest::keyClick(&blocks, Qt::Key_Space);
    QCOMPARE(blocks.CellBackColor(3, BlockMark), std::optional(cellColour::Yellow));
    FlexGrid &pests = grid("grdPestIn");
    pests.setFocus();
    // By the second word of the name too.
    QTest::keyClicks(&pests, QStringLiteral("17"));
    QCOMPARE(pests.Row(), 17);
    QVERIFY(pests.RowIsVisible(17));
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
}

void InstructionEditorPageTest::gridsAreNear()
{
    click("cmdAdd");
    find<QWidget>("cmbPerson").setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(find<QWidget>("dtpPestM").hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(grid("grdBlockIn").hasFocus());
    const std::pair<Qt::Key, const char *> letters[] = {
        {Qt::Key_I, "grdPestIn"}, {Qt::Key_D, "dtpPestM"}, {Qt::Key_K, "grdBlockIn"}};
    for (const auto &[letter, name] : letters) {
        QTest::keyClick(QApplication::focusWidget(), letter, Qt::AltModifier);
        QTRY_VERIFY2(find<QWidget>(name).hasFocus(), name);
    }
    host_->dialogs().queueAnswer(Answer::No);
    click("cmdTCancel");
}

void InstructionEditorPageTest::dateRewritesTheWeekAlone()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1});
    select(key);
    click("cmdEdit");
    auto &date = find<controls::DatePicker>("dtpPestM");
    date.setFocus();
    date.setCursorPosition(0);
    QTest::keyClick(&date, Qt::Key_Up);
    QCOMPARE(date.Value(), QDate(2027, 5, 4));
    QCOMPARE(farm_->session.CurrentPMDate.date(), QDate(2027, 5, 4));
    QVERIFY(find<QPushButton>("cmdPALL").isVisible());
    click("cmdTCancel");
}

void InstructionEditorPageTest::personOutsideTheListIsPreserved()
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

void InstructionEditorPageTest::limitsAreReported()
{
    const int key = issue(QStringLiteral("Count"), {1}, {1});
    select(key);
    click("cmdEdit");
    auto &note = find<QLineEdit>("txtPMNotes");
    note.insert(QString(300, u'n'));
    QCOMPARE(note.text().size(), 255);
    QCOMPARE(host_->failure, QStringLiteral("The note is limited to 255 characters"));
    auto &week = find<QLineEdit>("txtWeekNo");
    week.setText(QStringLiteral("99999"));
    click("cmdTSave");
    QCOMPARE(host_->failure,
             QStringLiteral("The instruction could not be saved: The week number takes whole numbers from -32768 "
                            "to 32767."));
    week.setText(QStringLiteral("18"));
    expectMessage();
    click("cmdTSave");
    click("cmdTCancel");
    select(key);
    click("cmdEdit");
    QCOMPARE(note.cursorPosition(), 0);
    click("cmdTCancel");
    capture(key, QStringLiteral("Blok A"));
    auto &captured = find<QLineEdit>("txtPMMNotes");
    QCOMPARE(captured.cursorPosition(), 0);
    host_->failure.clear();
    captured.insert(QStringLiteral("x"));
    QCOMPARE(host_->failure, QStringLiteral("The note is limited to 255 characters"));
}

void InstructionEditorPageTest::tooManyPestsAskFirst()
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

void InstructionEditorPageTest::savedInstructionIsPrinted_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("a sheet per block") << "cmdExcel";
    QTest::newRow("one sheet") << "cmdPALL";
}

void InstructionEditorPageTest::savedInstructionIsPrinted()
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

QTEST_MAIN(InstructionEditorPageTest)
#include "InstructionEditorPageTest.moc"
