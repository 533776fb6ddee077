// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/AnalysisBrowser.h"

#include "AnalysisScreen.h"
#include "platform/basic/Formats.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QFile>
#include <QSet>

/// The list of analyses, its filters and its selection.
class AnalysisBrowserTest : public AnalysisScreen
{
    Q_OBJECT
private Q_SLOTS:
    void captionsOfAKind_data();
    void captionsOfAKind();
    void activationStartsAtTheFirstRow();
    void filtersNarrowEachOther();
    void blockOverridesGroup();
    void resetShowsAll();
    void notActive();
    void emptyListLeavesTheKeyUnchanged();
    void selectionIsPainted();
    void keysSelect();
    void tabFollowsTheLayout();
    void keysSelectAfterEveryFill();
    void rowClickedAfterADateIsSelected();
    void periodStartIsStored();
    void failingStoreIsReported();
    void keysActOnTheList();
    void emptyListsGiveTheReason();
    void bannerShowsCaptionAndIcon();

private:
    void addLeaves();
};

void AnalysisBrowserTest::addLeaves()
{
    const AnalysisKind &leaf = *analysisKind(u"Leaf");
    for (const int planting : {farm_->kloof, farm_->dam, farm_->rand, farm_->oud, farm_->kloof}) {
        farm_->addAnalysis(leaf, planting, QDate(2026, 5, 1), 1.0F);
    }
}

void AnalysisBrowserTest::captionsOfAKind_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("captions");
    QTest::addColumn<QString>("entries");
    QTest::addColumn<QString>("labels");
    const QString leafLabels = QStringLiteral("N P K Ca Mg Na Mn Fe Cu Zn B");
    QTest::newRow("leaf") << "Leaf"
                          << "Leaf analisys/Leaf Analisys"
                          << "Leaf Part: Stem/Season: Post Harvest,Blossom,Nov-Dec" << leafLabels;
    QTest::newRow("fruit") << "Fruit"
                           << "Fruit analisys/Fruit Analisys"
                           << "Fruit Part: Kernel,Meat,Skin/Season: Post Harvest,Blossom,Nov-Dec" << leafLabels;
    QTest::newRow("basic") << "Basic"
                           << "Soil analisys:Basic/Soil Analisys"
                           << "Depth (cm)/Texture: Coarse,Fine"
                           << "pH(KCL) Conductivity KUV Klip (%) Clay content(%) Organic content(%)";
    QTest::newRow("extraction") << "Ex"
                                << "Soil analisys:Extraction/Soil Analisys"
                                << "Depth (cm)"
                                << "P(B1) P(B2) P(Ohlson) K Ca Na Mg Cl S Al";
    QTest::newRow("micro") << "Micro"
                           << "Soil analisys:Micro elements/Soil Analisys" << QString() << "Zn Cu B Mn Fe Mo";
}

void AnalysisBrowserTest::captionsOfAKind()
{
    QFETCH(QString, mode);
    QFETCH(QString, captions);
    QFETCH(QString, entries);
    QFETCH(QString, labels);
    open(mode);
    QCOMPARE(screen_->screenTitle() + u'/' + find<QLabel>("screenTitle").text(), captions);
    click("Command7");
    QStringList lines;
    const auto entry = [&](const char *caption, const char *list) {
        QString line = find<QLabel>(caption).text().remove(u'&');
        for (int i = 0; combo(list).isVisible() && i < combo(list).ListCount(); ++i) {
            line += (i == 0 ? QStringLiteral(": ") : QStringLiteral(",")) + combo(list).List(i);
        }
        if (find<QLabel>(caption).isVisible()) {
            lines.append(line);
        }
    };
    entry("Label3", "cmbLPart");
    entry("Label4", "cmbSeason");
    QCOMPARE(lines.join(u'/'), entries);
    QCOMPARE(box("txtDepth").isVisible(), entries.startsWith(QLatin1String("Depth")));
    QStringList shownLabels;
    for (int i = 0; i < 11; ++i) {
        const auto &label = find<QLabel>(qPrintable(QStringLiteral("Label5_%1").arg(i)));
        if (label.isVisible()) {
            shownLabels.append(label.text());
        }
    }
    QCOMPARE(shownLabels.join(u' '), labels);
    click("cmdRetAdd");
}

void AnalysisBrowserTest::activationStartsAtTheFirstRow()
{
    addLeaves();
    open(u"Leaf");
    QCOMPARE(shown(BlockCol), (QStringList{"Dam", "Kloof", "Kloof", "Rand"}));
    QCOMPARE(id(), 2);
    choose("cboGroup", QStringLiteral("Nuts"));
    click("opInActive");
    screen_->activateScreen();
    // Active plantings are listed again, whichever option is set.
    QCOMPARE(farm_->session.ShowActive, -1);
    QVERIFY(find<QRadioButton>("opInActive").isChecked());
    QCOMPARE(shown(BlockCol).size(), 4);
    QCOMPARE(combo("cboGroup").ListIndex(), -1);
    QCOMPARE(combo("cboType").ListCount(), 0);
    QCOMPARE(combo("cmbBlock").ListCount(), 3);
    QCOMPARE(farm_->session.ListRow, 1);
}

void AnalysisBrowserTest::filtersNarrowEachOther()
{
    addLeaves();
    open(u"Leaf");
    choose("cboGroup", QStringLiteral("Citrus"));
    QCOMPARE(shown(BlockCol), (QStringList{"Dam", "Kloof", "Kloof"}));
    QCOMPARE(grid().RowHeight(grid().Rows() - 1), 0);
    QCOMPARE(combo("cboType").ListCount(), 2);
    // A group alone also lists the plantings that are not active.
    QCOMPARE(combo("cmbBlock").ListCount(), 3);
    choose("cboType", QStringLiteral("Orange"));
    QCOMPARE(shown(BlockCol), (QStringList{"Kloof", "Kloof"}));
    QCOMPARE(id(), 1);
    choose("cboVariety", QStringLiteral("Valencia"));
    QCOMPARE(combo("cmbBlock").ListCount(), 1);
    choose("cmbBlock", QStringLiteral("Kloof"));
    QCOMPARE(shown(AnalysisKeyCol), (QStringList{"1", "5"}));
    QCOMPARE(farm_->session.CurrentPlantBlockID, farm_->kloof);
}

void AnalysisBrowserTest::blockOverridesGroup()
{
    addLeaves();
    open(u"Leaf");
    choose("cmbBlock", QStringLiteral("Rand"));
    combo("cboGroup").setText(QStringLiteral("Citrus"));
    farm_->session.FilterCrGrID = 1;
    click("opActive");
    QCOMPARE(shown(BlockCol), QStringList{"Rand"});
}

void AnalysisBrowserTest::resetShowsAll()
{
    addLeaves();
    open(u"Leaf");
    choose("cboGroup", QStringLiteral("Nuts"));
    choose("cboType", QStringLiteral("Macadamia"));
    click("cmdResetFilter");
    QCOMPARE(shown(BlockCol).size(), 4);
    QCOMPARE(combo("cboGroup").Text(), QString());
    QCOMPARE(combo("cmbBlock").ListCount(), 3);
    QCOMPARE(farm_->session.FilterCrTyID, 0);
}

void AnalysisBrowserTest::notActive()
{
    addLeaves();
    open(u"Leaf");
    click("opInActive");
    QCOMPARE(shown(BlockCol), QStringList{"Oud"});
    // Without a filter nothing is selected: the empty row is current and the key unchanged.
    QCOMPARE(grid().Row(), 2);
    QCOMPARE(id(), 2);
    click("cmdEdit");
    QVERIFY(!panelIsOpen());
}

void AnalysisBrowserTest::emptyListLeavesTheKeyUnchanged()
{
    id() = 77;
    open(u"Leaf");
    QCOMPARE(id(), 77);
    auto &from = find<controls::DatePicker>("dtpDateFrom");
    from.choose(QDate(2027, 1, 1)); // after the end
    QCOMPARE(grid().Rows(), 2);
    QCOMPARE(id(), 77);
    click("cmdEdit");
    QVERIFY(!panelIsOpen());
    QCOMPARE(id(), 77);
}

void AnalysisBrowserTest::selectionIsPainted()
{
    addLeaves();
    open(u"Leaf");
    clickRow(3);
    QCOMPARE(grid().CellBackColor(1, BlockCol), cellColour::PaleYellow);
    QCOMPARE(grid().CellBackColor(3, VarietyCol), cellColour::Yellow);
    QVERIFY(!grid().CellBackColor(3, AnalysisKeyCol));
    const QString what = QStringLiteral("%1, %2, N, 1").arg(grid().TextMatrix(3, BlockCol), basic::shortDate(QDate(2026, 5, 1)));
    QCOMPARE(grid().cellDescription(3, FirstValueCol), what + QStringLiteral(", chosen"));
    QCOMPARE(id(), 5);
    clickRow(5);
    QCOMPARE(grid().cellDescription(3, FirstValueCol), what + QStringLiteral(", seen before"));
    QCOMPARE(grid().CellBackColor(3, BlockCol), cellColour::PaleYellow);
    QVERIFY(!grid().CellBackColor(5, BlockCol));
    QCOMPARE(id(), 5);
}

void AnalysisBrowserTest::keysSelect()
{
    addLeaves();
    open(u"Leaf");
    grid().setFocus();
    QTest::keyClick(&grid(), Qt::Key_Down);
    QCOMPARE(id(), 1);
    QCOMPARE(grid().CellBackColor(2, BlockCol), cellColour::Yellow);
    QTest::keyClick(&grid(), Qt::Key_Return);
    QVERIFY(panelIsOpen());
    QTest::keyClick(&find<QWidget>("dtpAna"), Qt::Key_Escape);
    QVERIFY(!panelIsOpen());
    QVERIFY(grid().hasFocus());
    // A letter opens a list at its entry.
    combo("cmbBlock").setFocus();
    QTest::keyClick(&combo("cmbBlock"), Qt::Key_R);
    QTest::keyClick(static_cast<QWidget *>(combo("cmbBlock").view()), Qt::Key_Return);
    QCOMPARE(shown(BlockCol), QStringList{"Rand"});
}

void AnalysisBrowserTest::tabFollowsTheLayout()
{
    open(u"Leaf");
    QCOMPARE(
        tabOrder("cmdClose"),
        QStringLiteral("cmdClose cboGroup cboType cboVariety cmbBlock opActive dtpDateFrom dtpDateTo cmdResetFilter grdLeave "
                       "Command7 cmdEdit cmdLeaveDEl cmdExcel"));
    screen_->setFocus();
    QVERIFY(grid().hasFocus());
}

void AnalysisBrowserTest::keysSelectAfterEveryFill()
{
    addLeaves();
    open(u"Leaf");
    click("opInActive");
    grid().setFocus();
    QTest::keyClick(&grid(), Qt::Key_Up);
    QCOMPARE(id(), 4);
    QCOMPARE(grid().selectedRow(), 1);
    click("opActive");
    clickRow(3);
    host_->dialogs().expectMessage();
    click("cmdLeaveDEl");
    QCOMPARE(shown(AnalysisKeyCol), (QStringList{"2", "1", "3"}));
    grid().setFocus();
    QTest::keyClick(&grid(), Qt::Key_Up);
    QCOMPARE(id(), 3);
    // Keys move freely within the selected row.
    QTest::keyClick(&grid(), Qt::Key_Right);
    QTest::keyClick(&grid(), Qt::Key_Right);
    QCOMPARE(grid().Col(), CultivarCol);
}

void AnalysisBrowserTest::rowClickedAfterADateIsSelected()
{
    const AnalysisKind &leaf = *analysisKind(u"Leaf");
    for (int month = 1; month <= 4; ++month) {
        farm_->addAnalysis(leaf, farm_->kloof, QDate(2026, month, 2), 1.0F);
    }
    open(u"Leaf");
    auto &from = find<controls::DatePicker>("dtpDateFrom");
    const auto type = [&from](const QString &date) {
        from.setFocus(Qt::TabFocusReason);
        QTest::keyClicks(&from, date);
    };
    type(QStringLiteral("20260201"));
    clickRow(2);
    QCOMPARE(shown(AnalysisKeyCol), (QStringList{"2", "3", "4"}));
    QCOMPARE(id(), 3);
    QCOMPARE(grid().selectedRow(), 2);
    // The same after the list was locked and unlocked.
    click("cmdEdit");
    click("cmdRetAdd");
    type(QStringLiteral("20260301"));
    clickRow(2);
    QCOMPARE(id(), 4);
    host_->dialogs().expectMessage();
    click("cmdLeaveDEl");
    QCOMPARE(farm_->count("tblLeaveAnalysis", "LeaveAnalysisID = 4"), 0);
}

void AnalysisBrowserTest::periodStartIsStored()
{
    addLeaves();
    QFile file(farm_->appPath() + "/FindSDate.txt");
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("2026/06/01\r\n");
    file.close();
    open(u"Leaf");
    QCOMPARE(shown(BlockCol), QStringList());
    auto &from = find<controls::DatePicker>("dtpDateFrom");
    from.setFocus();
    from.choose(QDate(2026, 2, 3));
    QCOMPARE(shown(BlockCol).size(), 4);
    grid().setFocus();
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString(file.readAll()).trimmed(), QStringLiteral("2026/02/03"));
}

void AnalysisBrowserTest::failingStoreIsReported()
{
    farm_->close();
    open(u"Leaf");
    QVERIFY(!host_->failure.isEmpty());
    QCOMPARE(find<QLabel>("screenTitle").text(), QStringLiteral("Leaf Analisys"));
}

void AnalysisBrowserTest::keysActOnTheList()
{
    addLeaves();
    open(u"Leaf");
    grid().setFocus();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F2, Qt::Key_Insert}) {
        QTest::keyClick(&grid(), key);
        QVERIFY(panelIsOpen());
        QCOMPARE(id(), key == Qt::Key_Insert ? 0 : 2);
        click("cmdRetAdd");
    }
    QTest::keyClick(&grid(), Qt::Key_C, Qt::ControlModifier);
    const QString row = QGuiApplication::clipboard()->text();
    QVERIFY2(row.startsWith(QStringLiteral("Dam\tEureka\t")), qPrintable(row));
    QVERIFY2(row.endsWith(QStringLiteral("Stem\tBlossom") + QStringLiteral("\t1").repeated(11)), qPrintable(row));
    host_->dialogs().expectMessage();
    QTest::keyClick(&grid(), Qt::Key_Delete);
    QCOMPARE(farm_->count("tblLeaveAnalysis", "LeaveAnalysisID = 2"), 0);
}

void AnalysisBrowserTest::emptyListsGiveTheReason()
{
    open(u"Leaf");
    QVERIFY(grid().emptyText().contains(QStringLiteral("press Add")));
    click("opInActive");
    QVERIFY(grid().emptyText().contains(QStringLiteral("inactive blocks")));
    addLeaves();
    click("opActive");
    QCOMPARE(grid().emptyText(), QString());
    farm_->session.dbPest->Execute(QStringLiteral("DELETE FROM tblLeaveAnalysis where BlockPID = %1").arg(farm_->rand));
    click("opActive");
    choose("cboGroup", QStringLiteral("Nuts"));
    QVERIFY(grid().emptyText().contains(QStringLiteral("Reset Filter")));
    click("cmdResetFilter");
    QCOMPARE(grid().emptyText(), QString());
}

void AnalysisBrowserTest::bannerShowsCaptionAndIcon()
{
    QList<QByteArray> icons;
    for (const AnalysisKind &kind : analysisKinds()) {
        open(kind.mode);
        QCOMPARE(find<QLabel>("formCaption").text(), kind.formCaption.toString());
        const QImage icon = find<QLabel>("Image2").pixmap().toImage();
        icons.append(QByteArray(reinterpret_cast<const char *>(icon.constBits()), icon.sizeInBytes()));
    }
    QCOMPARE(QSet<QByteArray>(icons.begin(), icons.end()).size(), icons.size());
}

QTEST_MAIN(AnalysisBrowserTest)
#include "AnalysisBrowserTest.moc"
