// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/AnalysisPanel.h"

#include "AnalysisScreen.h"

#include <QAbstractItemView>
#include <QClipboard>

/// Entering, changing and deleting one analysis.
class AnalysisPanelTest : public AnalysisScreen
{
    Q_OBJECT
private Q_SLOTS:
    void addedByKeysAlone();
    void everyBoxIsStoredInItsField_data();
    void everyBoxIsStoredInItsField();
    void editPreservesUnchangedValues_data() { kinds(); }
    void editPreservesUnchangedValues();
    void depthOfAnySizeIsSavedUnchanged_data();
    void depthOfAnySizeIsSavedUnchanged();
    void withoutBlockThePanelStaysOpen();
    void closeAsksAboutUnsavedInput_data();
    void closeAsksAboutUnsavedInput();
    void escapeAsksAboutUnsavedInput();
    void escapeClosesPopupsFirst();
    void lettersOfThePanelDoNotActOnTheList_data() { kinds(); }
    void lettersOfThePanelDoNotActOnTheList();
    void refusedSave();
    void savedOnceWhenTheListFails();
    void tooLargeANumberStaysInItsBox();
    void textsOutsideTheListArePreserved();
    void activationIsPostponedWhileThePanelIsOpen();
    void deleteTakesTheFirstRowOfAFreshScreen_data() { kinds(); }
    void deleteTakesTheFirstRowOfAFreshScreen();
    void refusedDelete();
    void pastedRowFillsTheBoxes();

private:
    void type(const char *name, const QString &text)
    {
        box(name).setFocus();
        box(name).selectAll();
        QTest::keyClicks(&box(name), text);
    }
};

void AnalysisPanelTest::addedByKeysAlone()
{
    open(u"Leaf");
    const auto key = [](Qt::Key code, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), code, modifiers);
    };
    key(Qt::Key_A, Qt::AltModifier);
    QTRY_VERIFY(panelIsOpen());
    QTest::keyClicks(QApplication::focusWidget(), "20260402");
    key(Qt::Key_Tab);
    QTest::keyClicks(QApplication::focusWidget(), "Stem");
    key(Qt::Key_Tab);
    key(Qt::Key_Down); // the first block
    key(Qt::Key_Tab);
    key(Qt::Key_Down);
    key(Qt::Key_Tab);
    for (int i = 1; i <= 11; ++i) {
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("%1.115").arg(i));
        key(Qt::Key_Return);
        // Enter queues a Tab.
        QCoreApplication::processEvents();
    }
    QCOMPARE(QApplication::focusWidget(), &find<QWidget>("Command3"));
    key(Qt::Key_Return);
    QVERIFY(!panelIsOpen());
    QCOMPARE(stored("Select BlockPID, LAPart, LASeason, LA_N, LA_Ca, LA_B from tblLeaveAnalysis"),
             QStringList{QStringLiteral("%1|Stem|Post Harvest|1.12|4.12|11.12").arg(farm_->dam)});
    QCOMPARE(grid().cellValue(1, DateCol).value<basic::SerialDate>().date(), QDate(2026, 4, 2));
    QVERIFY(host_->status.contains(QStringLiteral("Dam, 2026/04/02, saved")));
    QCOMPARE(id(), 1);
}

void AnalysisPanelTest::everyBoxIsStoredInItsField_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("fields");
    QTest::addColumn<QString>("expected");
    QTest::newRow("leaf")
        << "Leaf"
        << "LASeason, LA_N, LA_P, LA_K, LA_Ca, LA_Mg, LA_Na, LA_Mn, LA_Fe, LA_Cu, LA_Zn, LA_B from tblLeaveAnalysis"
        << "Fine|1|2|3|4|5|6|7|8|9|10|11";
    QTest::newRow("fruit")
        << "Fruit"
        << "FASeason, FA_N, FA_P, FA_K, FA_Ca, FA_Mg, FA_Na, FA_Mn, FA_Fe, FA_Cu, FA_Zn, FA_B from tblFruitAnalysis"
        << "Fine|1|2|3|4|5|6|7|8|9|10|11";
    QTest::newRow("basic") << "Basic"
                           << "SBTexture, SBDepth, SBpHSuur, SBConduct, SBKUV, SBpHWater, SBClay, SBOrganic from tblSoilBasic"
                           << "Fine|30|1|2|3|4|5|6";
    QTest::newRow("extraction")
        << "Ex"
        << "SEDepth, SEPBray, SEPB2, SEPAcid, SE_K, SE_Ca, SE_Na, SE_Mg, SE_Cl, SE_S, SE_Al from tblSoilExtraction"
        << "30|1|2|3|4|5|6|7|8|9|10";
    QTest::newRow("micro") << "Micro"
                           << "MicroZn, MicroCu, MicroB, MicroMn, MicroFe, MicroMo from tblSoilMicro"
                           << "1|2|3|4|5|6";
}

void AnalysisPanelTest::everyBoxIsStoredInItsField()
{
    QFETCH(QString, mode);
    QFETCH(QString, fields);
    QFETCH(QString, expected);
    open(mode);
    const auto enter = [&](int first) {
        box("txtDepth").setText(QStringLiteral("30"));
        combo("cmbSeason").setText(QStringLiteral("Fine"));
        for (const char *name : {"txtN", "txtP", "txtK", "txtCa", "txtMg", "txtNa", "txtMn", "txtFe", "txtCu", "txtZn", "txtB"}) {
            box(name).setText(QString::number(first++));
        }
        click("Command3");
    };
    click("Command7");
    choose("cboBlock", QStringLiteral("Kloof"));
    enter(21);
    // The same row again, with the method for existing records.
    clickRow(1);
    click("cmdEdit");
    enter(1);
    QCOMPARE(stored("Select " + fields), QStringList{expected});
}

void AnalysisPanelTest::editPreservesUnchangedValues()
{
    QFETCH(const AnalysisKind *, kind);
    farm_->addAnalysis(*kind, farm_->rand, QDate(2026, 5, 1), 2.345F);
    open(kind->mode);
    const QString before = grid().TextMatrix(1, DateCol);
    click("cmdEdit");
    QCOMPARE(combo("cboBlock").Text(), QStringLiteral("Rand"));
    QCOMPARE(box("txtN").text(), QStringLiteral("2.35"));
    click("Command3");
    // Each value is now as its box showed it; the depth is not formatted.
    QCOMPARE(grid().TextMatrix(1, FirstValueCol), QStringLiteral("2.35"));
    if (kind->secondEntry == AnalysisSecondEntry::Depth) {
        QCOMPARE(grid().TextMatrix(1, PartOrDepthCol), QStringLiteral("2.345"));
    }
    QCOMPARE(grid().TextMatrix(1, DateCol), before);
    QCOMPARE(grid().TextMatrix(1, BlockCol), QStringLiteral("Rand"));
    QCOMPARE(grid().Rows(), 3);
}

void AnalysisPanelTest::depthOfAnySizeIsSavedUnchanged_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("boxed");
    QTest::newRow("small") << 0.00005F << "0.00005"
                           << "0.00";
    QTest::newRow("large") << 2.5e10F << "25000000000"
                           << "25000000000.00";
    QTest::newRow("nine digits") << 33.333332F << "33.333332"
                                 << "33.33";
    QTest::newRow("negative") << -0.00025F << "-0.00025"
                              << "0.00";
}

void AnalysisPanelTest::depthOfAnySizeIsSavedUnchanged()
{
    QFETCH(float, value);
    QFETCH(QString, shown);
    QFETCH(QString, boxed);
    farm_->addAnalysis(*analysisKind(u"Basic"), farm_->kloof, QDate(2026, 5, 1), value);
    open(u"Basic");
    QCOMPARE(grid().TextMatrix(1, PartOrDepthCol), shown);
    QCOMPARE(grid().TextMatrix(1, FirstValueCol), shown);
    click("cmdEdit");
    QCOMPARE(box("txtDepth").text(), shown);
    QCOMPARE(box("txtN").text(), boxed);
    click("Command3");
    const dao::Recordset saved = farm_->session.dbPest->OpenRecordset("Select SBDepth, SBpHSuur from tblSoilBasic");
    QCOMPARE(static_cast<float>(saved.number(0)), value);
    // The other values are rounded to what their boxes show.
    QCOMPARE(static_cast<float>(saved.number(1)), boxed.toFloat());
}

void AnalysisPanelTest::withoutBlockThePanelStaysOpen()
{
    open(u"Micro");
    click("Command7");
    box("txtN").setText("4");
    host_->dialogs().expectMessage();
    click("Command3");
    QCOMPARE(host_->dialogs().takeLastText(), QStringLiteral("Please select a block."));
    QVERIFY(panelIsOpen());
    QVERIFY(combo("cboBlock").hasFocus());
    QCOMPARE(box("txtN").text(), QStringLiteral("4"));
}

void AnalysisPanelTest::closeAsksAboutUnsavedInput_data()
{
    QTest::addColumn<QString>("touched");
    QTest::addColumn<bool>("asks");
    QTest::newRow("nothing") << QString() << false;
    QTest::newRow("date alone") << "dtpAna" << false;
    QTest::newRow("a box that was only left") << "txtMg" << true;
    QTest::newRow("depth that was only left") << "txtDepth" << false;
    QTest::newRow("block") << "cboBlock" << true;
    QTest::newRow("texture") << "cmbSeason" << true;
}

void AnalysisPanelTest::closeAsksAboutUnsavedInput()
{
    QFETCH(QString, touched);
    QFETCH(bool, asks);
    farm_->addAnalysis(*analysisKind(u"Basic"), farm_->kloof, QDate(2026, 5, 1), 2.0F);
    open(u"Basic");
    click("cmdEdit");
    if (touched == QLatin1String("dtpAna")) {
        find<controls::DatePicker>("dtpAna").choose(QDate(2026, 7, 7));
    } else if (touched.startsWith(QLatin1String("c"))) {
        combo(qPrintable(touched)).setListIndex(0);
    } else if (!touched.isEmpty()) {
        box(qPrintable(touched)).setFocus();
        find<QWidget>("cmdRetAdd").setFocus();
    }
    if (asks) {
        host_->dialogs().queueAnswer(Answer::No);
    }
    click("cmdRetAdd");
    QCOMPARE(host_->dialogs().shown().size(), asks ? 1U : 0U);
    QVERIFY(!panelIsOpen());
    QVERIFY(!grid().TextMatrix(1, DateCol).contains(QLatin1String("07")));
}

void AnalysisPanelTest::escapeAsksAboutUnsavedInput()
{
    farm_->addAnalysis(*analysisKind(u"Leaf"), farm_->kloof, QDate(2026, 5, 1), 2.0F);
    open(u"Leaf");
    click("cmdEdit");
    type("txtK", "7.005");
    host_->dialogs().queueAnswer(Answer::Yes);
    QTest::keyClick(&box("txtK"), Qt::Key_Escape);
    QCOMPARE(host_->dialogs().shown().back().title, QStringLiteral("Save Changes"));
    QCOMPARE(host_->dialogs().shown().back().preselected, Answer::Yes);
    QCOMPARE(host_->dialogs().takeLastText(), QStringLiteral("Do you want to save the changes?"));
    QVERIFY(!panelIsOpen());
    QCOMPARE(grid().TextMatrix(1, FirstValueCol + 2), QStringLiteral("7.01"));
}

void AnalysisPanelTest::escapeClosesPopupsFirst()
{
    open(u"Leaf");
    click("Command7");
    combo("cmbSeason").setFocus();
    combo("cmbSeason").showPopup();
    QTest::keyClick(static_cast<QWidget *>(combo("cmbSeason").view()), Qt::Key_Escape);
    QVERIFY(!combo("cmbSeason").view()->isVisible());
    QVERIFY(panelIsOpen());
    QTest::mouseClick(find<controls::DatePicker>("dtpAna").findChild<QAbstractButton *>(), Qt::LeftButton);
    QWidget *calendar = QApplication::activePopupWidget();
    QVERIFY(calendar);
    QTest::keyClick(calendar->focusWidget() ? calendar->focusWidget() : calendar, Qt::Key_Escape);
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(panelIsOpen());
    for (const char *field : {"cmbSeason", "cboBlock"}) {
        if (!panelIsOpen()) {
            click("Command7");
        }
        find<QWidget>(field).setFocus();
        QTest::keyClick(&find<QWidget>(field), Qt::Key_Escape);
        QVERIFY2(!panelIsOpen(), field);
    }
}

/// A user may press a letter of the panel's fields while the panel is closed.
void AnalysisPanelTest::lettersOfThePanelDoNotActOnTheList()
{
    QFETCH(const AnalysisKind *, kind);
    open(kind->mode);
    QList<QKeySequence> acting;
    for (const char *button : {"Command7", "cmdLeaveDEl", "cmdExcel"}) {
        acting.append(QKeySequence::mnemonic(find<QPushButton>(button).text()));
    }
    for (const QLabel *caption : find<QWidget>("fraAddL").findChildren<QLabel *>()) {
        QVERIFY2(!acting.contains(QKeySequence::mnemonic(caption->text())), qPrintable(caption->text()));
    }
}

void AnalysisPanelTest::refusedSave()
{
    open(u"Leaf");
    click("Command7");
    choose("cboBlock", QStringLiteral("Kloof"));
    type("txtN", "3");
    refuseWrites();
    host_->dialogs().expectMessage();
    click("Command3");
    QCOMPARE(host_->dialogs().takeLastText(), QStringLiteral("Could not add / edit the analysis"));
    QVERIFY(panelIsOpen());
    QVERIFY(host_->failure.startsWith(QLatin1String("Leaf analysis could not be saved: ")));
    QVERIFY(host_->status.isEmpty());
    // After the question of Close the panel closes nevertheless.
    host_->dialogs().queueAnswer(Answer::Yes);
    host_->dialogs().expectMessage();
    click("cmdRetAdd");
    QVERIFY(!panelIsOpen());
}

void AnalysisPanelTest::savedOnceWhenTheListFails()
{
    open(u"Leaf");
    click("Command7");
    choose("cboBlock", QStringLiteral("Kloof"));
    type("txtN", "3");
    farm_->handle(store::DatabaseFile::Main).setFailure(QStringLiteral("ZN4.mdb"), QStringLiteral("gone"));
    click("Command3");
    QCOMPARE(host_->errors.size(), 1);
    host_->errors.clear();
    QVERIFY(!panelIsOpen());
    QCOMPARE(farm_->count("tblLeaveAnalysis"), 1);
}

void AnalysisPanelTest::tooLargeANumberStaysInItsBox()
{
    open(u"Micro");
    click("Command7");
    choose("cboBlock", QStringLiteral("Kloof"));
    box("txtN").setText(QString(60, QLatin1Char('9')));
    click("Command3");
    QCOMPARE(host_->errors.size(), 1);
    host_->errors.clear();
    QVERIFY(panelIsOpen());
    QCOMPARE(farm_->count("tblSoilMicro"), 0);
    box("txtN").setText("9");
    click("Command3");
    QCOMPARE(farm_->count("tblSoilMicro"), 1);
}

void AnalysisPanelTest::textsOutsideTheListArePreserved()
{
    farm_->session.dbPest->Execute(
        "INSERT INTO tblFruitAnalysis (BlockPID, FADate, FAPart, FASeason) VALUES (1, #03/30/2026#, 'Peel', 'June')");
    open(u"Fruit");
    click("cmdEdit");
    QCOMPARE(combo("cmbLPart").Text() + combo("cmbSeason").Text(), QStringLiteral("PeelJune"));
    click("Command3");
    QCOMPARE(stored("Select FAPart, FASeason from tblFruitAnalysis"), QStringList{"Peel|June"});
}

void AnalysisPanelTest::activationIsPostponedWhileThePanelIsOpen()
{
    farm_->addAnalysis(*analysisKind(u"Leaf"), farm_->kloof, QDate(2026, 5, 1), 2.0F);
    open(u"Leaf");
    click("opInActive");
    click("Command7");
    choose("cboBlock", QStringLiteral("Dam"));
    screen_->activateScreen();
    QCOMPARE(id(), 0);
    QCOMPARE(farm_->session.ShowActive, 0);
    // Neither mouse nor keys reach the list meanwhile, which would change the current record.
    clickRow(1);
    QCOMPARE(id(), 0);
    QVERIFY(!find<QWidget>("Command7").isEnabled() && !combo("cmbBlock").isEnabled());
    click("Command3");
    QCOMPARE(stored("Select BlockPID from tblLeaveAnalysis order by LeaveAnalysisID"), (QStringList{"1", "2"}));
    QCOMPARE(farm_->session.ShowActive, -1);
}

void AnalysisPanelTest::deleteTakesTheFirstRowOfAFreshScreen()
{
    QFETCH(const AnalysisKind *, kind);
    farm_->addAnalysis(*kind, farm_->kloof, QDate(2026, 5, 2), 2.0F);
    farm_->addAnalysis(*kind, farm_->kloof, QDate(2026, 5, 1), 1.0F);
    open(kind->mode);
    const bool removes = kind->mode != QLatin1String("Micro");
    for (int time = 0; time < 2; ++time) {
        if (removes) {
            host_->dialogs().expectMessage();
        }
        click("cmdLeaveDEl");
        QCOMPARE(host_->dialogs().shown().size(), removes ? static_cast<std::size_t>(time) + 1 : 0U);
        // The second time the same key finds nothing, which is no error.
        QCOMPARE(shown(FirstValueCol), removes ? QStringList{"2"} : (QStringList{"1", "2"}));
        QCOMPARE(id(), 2);
    }
    id() = 0;
    click("cmdLeaveDEl");
    QCOMPARE(shown(AnalysisKeyCol).size(), removes ? 1 : 2);
}

void AnalysisPanelTest::refusedDelete()
{
    farm_->addAnalysis(*analysisKind(u"Ex"), farm_->kloof, QDate(2026, 5, 2), 2.0F);
    open(u"Ex");
    refuseWrites();
    host_->dialogs().expectMessage();
    click("cmdLeaveDEl");
    QCOMPARE(host_->dialogs().takeLastText(), QStringLiteral("Could not delete the analysis"));
    QCOMPARE(grid().CellBackColor(1, BlockCol), cellColour::Yellow);
}

void AnalysisPanelTest::pastedRowFillsTheBoxes()
{
    open(u"Micro");
    click("Command7");
    choose("cboBlock", QStringLiteral("Kloof"));
    const auto paste = [this](const char *name, const QString &text) {
        QGuiApplication::clipboard()->setText(text);
        box(name).setFocus(Qt::TabFocusReason);
        box(name).selectAll();
        QTest::keyClick(&box(name), Qt::Key_V, Qt::ControlModifier);
    };
    paste("txtP", QStringLiteral("1.5\t2,25\t\t<0.01\r\n9\t9\r\n"));
    QCOMPARE(box("txtN").text(), QString());
    QCOMPARE(box("txtP").text(), QStringLiteral("1.50"));
    QCOMPARE(box("txtK").text(), QStringLiteral("2.25"));
    QCOMPARE(box("txtCa").text(), QString());
    QCOMPARE(box("txtMg").text(), QStringLiteral("<0.01"));
    QVERIFY(box("txtMg").hasFocus());
    QVERIFY(host_->failure.isEmpty());
    // Only visible boxes are filled, and the user learns what was left out.
    paste("txtMg", QStringLiteral("3\t4\t5\t6"));
    QCOMPARE(box("txtMg").text() + box("txtNa").text(), QStringLiteral("3.004.00"));
    QCOMPARE(box("txtMn").text(), QString());
    QCOMPARE(host_->failure, QStringLiteral("4 values were pasted into 2 fields; the last 2 were left out"));
    // A single value is text like any other.
    paste("txtN", QStringLiteral("7"));
    QCOMPARE(box("txtN").text(), QStringLiteral("7"));
    click("Command3");
    QCOMPARE(stored("Select MicroZn, MicroCu, MicroB, MicroMn, MicroFe, MicroMo from tblSoilMicro"),
             QStringList{"7|1.5|2.25|0|3|4"});
}

QTEST_MAIN(AnalysisPanelTest)
#include "AnalysisPanelTest.moc"
