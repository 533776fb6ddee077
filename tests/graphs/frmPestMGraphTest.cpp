// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/frmPestMGraph.h"

#include "GraphFarm.h"
#include "platform/chart/ChartView.h"
#include "platform/controls/DatePicker.h"
#include "support/ScreenCase.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

using controls::ItemCombo;

class frmPestMGraphTest : public ScreenCase<GraphFarm, frmPestMGraph>
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { end(); }
    void criteriaFillEachOther();
    void largestAndSmallest();
    void pointsOnlyPerBlock();
    void leavingAPickerEmptiesTheBlock();
    void drawAsksForWhatIsMissing();
    void drawReadsOutAndReportsErrors();
    void namesAreWholeAndSpoken();
    void zoomAndScroll();
    void activationAndResizeWhileZoomed();
    void optionsTakeTwoRowsWhereNarrow();
    void focusFramesTheGraph();
    void linesByDateHaveMarkers();
    void readOutNamesTheSeries();
    void printing();

private:
    ItemCombo &combo(const char *name) { return find<ItemCombo>(name); }
    /// Texts of the five series lists, "|" between.
    QString series();
    QString labels() { return find<QLabel>("lblPointVal_1").text() + u'|' + find<QLabel>("lblPointVal_2").text(); }
    chart::ChartView &chGraph() { return find<chart::ChartView>("chGraph"); }
};

void frmPestMGraphTest::init()
{
    start(QDate(2026, 5, 4));
    // Sums in block A: pest 1 to 6 have 10, 20, 20, 5, 40, 30.
    int pest = 0;
    for (const int count : {10, 20, 20, 5, 40, 30}) {
        farm_->found({.week = 11, .pest = ++pest, .count = count});
    }
    farm_->found({.week = 12, .block = 2, .pest = 7, .count = 1});
    showScreen();
}

QString frmPestMGraphTest::series()
{
    QStringList texts;
    for (const char *name : {"cbo0", "cbo1", "cbo2", "cbo3", "cbo4"}) {
        texts.append(combo(name).Text());
    }
    return texts.join(u'|');
}

void frmPestMGraphTest::criteriaFillEachOther()
{
    QCOMPARE(farm_->session.CurrentSDate, QStringLiteral("01/01/2026"));
    QCOMPARE(combo("cmbBCount").ListCount(), 2);
    QVERIFY(combo("cbo0").isHidden() && find<QCheckBox>("chk_2").isHidden());
    combo("cmbBCount").setListIndex(0);
    QVERIFY(!combo("cbo4").isHidden());
    QCOMPARE(combo("cbo0").ListCount(), 6);
    QCOMPARE(find<QLabel>("lbl_12").text(), QStringLiteral("Pest 2"));

    click("opt_1");
    QCOMPARE(find<QLabel>("Label2_1").text(), QStringLiteral("Pest:"));
    QCOMPARE(combo("cmbBCount").ListCount(), 7);
    combo("cmbBCount").setListIndex(combo("cmbBCount").findText(QStringLiteral("Pest 7")));
    QCOMPARE(series(), QStringLiteral("Blok B||||"));
    QCOMPARE(find<QLabel>("lbl_11").text(), QStringLiteral("Block 1"));

    click("opt_2");
    QVERIFY(combo("cmbBCount").isHidden());
    QCOMPARE(combo("cbo3").ListCount(), 7);
    QCOMPARE(farm_->session.CurrentBlockID, 0);
    // Nothing was answered by yes or no.
    click("OptType_1");
    QCOMPARE(farm_->session.CurrentPMMethodID, 2);
    QCOMPARE(series(), QStringLiteral("||||"));
    // An activation begins with counts, whatever the choice shows.
    screen_->activateScreen();
    QCOMPARE(farm_->session.CurrentPMMethodID, 1);
    QVERIFY(find<QRadioButton>("OptType_1").isChecked() && find<QRadioButton>("opt_0").isChecked());
}

void frmPestMGraphTest::largestAndSmallest()
{
    combo("cmbBCount").setListIndex(0);
    click("chk_3");
    QVERIFY(series().startsWith(QStringLiteral("Pest 5|Pest 6|")) && series().endsWith(QStringLiteral("|Pest 1")));
    click("chk_2");
    QVERIFY(!find<QCheckBox>("chk_3").isChecked());
    QVERIFY(series().startsWith(QStringLiteral("Pest 4|Pest 1|")) && series().endsWith(QStringLiteral("|Pest 6")));
    click("chk_2");
    QCOMPARE(farm_->session.GraphRankMode, 0);
    click("chk_3");
    combo("cmbBCount").setListIndex(1);
    QCOMPARE(series(), QStringLiteral("Pest 7||||"));
}

void frmPestMGraphTest::pointsOnlyPerBlock()
{
    click("OptW_2");
    click("opt_1");
    QVERIFY(find<QRadioButton>("OptW_0").isChecked());
    QVERIFY(find<QRadioButton>("OptW_2").isHidden());
    click("opt_0");
    QVERIFY(!find<QRadioButton>("OptW_2").isHidden());
}

void frmPestMGraphTest::leavingAPickerEmptiesTheBlock()
{
    combo("cmbBCount").setListIndex(0);
    auto &from = find<controls::DatePicker>("dtpDateFrom");
    from.setFocus();
    from.setValue(QDate(2026, 4, 1));
    find<QPushButton>("cmd_0").setFocus();
    QCOMPARE(combo("cmbBCount").Text(), QString());
    QCOMPARE(combo("cmbBCount").ListCount(), 0);
    QCOMPARE(farm_->session.CurrentSDate, QStringLiteral("2026/04/01"));
    QVERIFY(QFile::exists(farm_->session.AppPath + QStringLiteral("/FindSDate.txt")));
}

void frmPestMGraphTest::drawAsksForWhatIsMissing()
{
    auto &from = find<controls::DatePicker>("dtpDateFrom");
    // Left while the window is certainly active.
    std::size_t boxesWhenLeft = 1;
    connect(&from, &controls::DatePicker::LostFocus, this, [&] { boxesWhenLeft = host_->dialogs().shown().size(); });
    from.setFocus();
    from.setValue(QDate(2026, 4, 1));
    host_->dialogs().expectMessage();
    QTest::keyClick(&from, Qt::Key_Insert);
    QCOMPARE(host_->dialogs().takeLastText(), QStringLiteral("Select a block!"));
    QVERIFY(combo("cmbBCount").hasFocus());
    QCOMPARE(boxesWhenLeft, 0U);
    QCOMPARE(farm_->session.CurrentSDate, QStringLiteral("2026/04/01"));
    click("opt_1");
    host_->dialogs().expectMessage();
    click("cmd_0");
    QCOMPARE(host_->dialogs().takeLastText(), QStringLiteral("Select a pest!"));
    click("opt_2");
    for (const char *name : {"cbo0", "cbo1", "cbo2", "cbo3", "cbo4"}) {
        combo(name).setText(QString());
    }
    host_->dialogs().expectMessage();
    click("cmd_0");
    QCOMPARE(host_->dialogs().takeLastText(), QStringLiteral("No data to dispay"));
    QCOMPARE(chGraph().model().SeriesCount(), 0);
    // No chart has been drawn whose styles could be set.
    host_->dialogs().expectMessage();
    click("cmd_5");
    QVERIFY(host_->dialogs().takeLastText().startsWith(QStringLiteral("9 - Subscript out of range")));
}

void frmPestMGraphTest::drawReadsOutAndReportsErrors()
{
    QCOMPARE(combo("cbo_6").Text(), QStringLiteral("3dBar"));
    QCOMPARE(chGraph().model().chartType(), chart::ChartType::Bar2d);
    combo("cmbBCount").setListIndex(0);
    click("cmd_0");
    QCOMPARE(chGraph().model().ColumnCount(), 5);
    const QPoint bar = chGraph().positionOf({3, 11}).value();
    QTest::mouseClick(&chGraph(), Qt::LeftButton, {}, bar);
    QCOMPARE(labels(), QStringLiteral("11|20"));
    combo("cbo_6").setListIndex(10);
    QCOMPARE(chGraph().model().chartType(), chart::ChartType::Pie2d);
    QTest::mouseClick(&chGraph(), Qt::LeftButton, {}, chGraph().positionOf({5, 1}).value());
    QCOMPARE(labels(), QStringLiteral("Pest 5|40"));
    QTest::mouseClick(&chGraph(), Qt::LeftButton, {}, QPoint(2, 2));
    QCOMPARE(labels(), QStringLiteral("|"));

    // A week past the table; the chart stays as it was.
    farm_->found({.week = 60, .pest = 2, .count = 1});
    host_->dialogs().expectMessage();
    click("cmd_0");
    QVERIFY(host_->dialogs().takeLastText().startsWith(QStringLiteral("9 - Subscript out of range")));
    QCOMPARE(chGraph().model().ChartData().columnSum(2).value(), 20.0);
    // A name blanked and typed again is the one of the list.
    QLineEdit &typed = *combo("cbo1").lineEdit();
    typed.selectAll();
    QTest::keyClick(&typed, Qt::Key_Delete);
    QTest::keyClicks(&typed, QStringLiteral("Pest 2"));
    QCOMPARE(combo("cbo1").ItemData(combo("cbo1").ListIndex()), 2);
    // A name that is typed and in no list has no key.
    combo("cbo1").setText(QStringLiteral("Anything"));
    host_->dialogs().expectMessage();
    click("cmd_0");
    QVERIFY(host_->dialogs().takeLastText().startsWith(QStringLiteral("9 - ")));
}

void frmPestMGraphTest::zoomAndScroll()
{
    combo("cmbBCount").setListIndex(0);
    click("cmd_0");
    const QSize unzoomed = chGraph().size();
    QCOMPARE(unzoomed, find<QWidget>("pic_0").size());
    auto &vertical = find<QScrollBar>("VScroll");
    QVERIFY(vertical.isHidden());
    for (int press = 0; press < 5; ++press) {
        click("cmd_2");
    }
    QVERIFY(!find<QPushButton>("cmd_2").isEnabled() && !vertical.isHidden());
    QVERIFY(qAbs(chGraph().height() - unzoomed.height() * 17 / 2) <= 1);
    QVERIFY(qAbs(chGraph().geometry().bottom() + 1 - unzoomed.height()) <= 1);
    vertical.setValue(0);
    QVERIFY(qAbs(chGraph().y()) <= 7);
    find<QScrollBar>("HScroll").setValue(30);
    QCOMPARE(chGraph().x(), -200);
    // A draw goes back to the whole chart and leaves the scroll bars.
    click("cmd_0");
    QCOMPARE(chGraph().geometry(), QRect(QPoint(0, 0), unzoomed));
    QVERIFY(!vertical.isHidden());
    click("cmd_3");
    click("cmd_2");
    QCOMPARE(chGraph().size(), unzoomed);
}

void frmPestMGraphTest::activationAndResizeWhileZoomed()
{
    const auto fills = [this] { return chGraph().geometry() == find<QWidget>("pic_0").rect(); };
    combo("cmbBCount").setListIndex(0);
    click("cmd_0");
    for (int press = 0; press < 5; ++press) {
        click("cmd_2");
    }
    screen_->activateScreen();
    QVERIFY(fills() && find<QScrollBar>("VScroll").isHidden());
    QVERIFY(find<QPushButton>("cmd_2").isEnabled() && !find<QPushButton>("cmd_3").isEnabled());
    click("cmd_2");
    click("cmd_2");
    screen_->resize(screen_->size() + QSize(200, 150));
    QTRY_VERIFY(find<QWidget>("pic_0").height() * 5 / 2 - chGraph().height() <= 1);
    QVERIFY(qAbs(chGraph().geometry().bottom() - find<QWidget>("pic_0").rect().bottom()) <= 7);
    click("cmd_3");
    click("cmd_3");
    QVERIFY(fills());
    QCOMPARE(find<QScrollBar>("HScroll").maximum(), 0);
    combo("cmbBCount").setListIndex(0);
    click("cmd_0");
    click("cmd_3");
    screen_->resize(screen_->size() - QSize(100, 50));
    QTRY_VERIFY(fills());
}

void frmPestMGraphTest::optionsTakeTwoRowsWhereNarrow()
{
    const auto &options = find<QFrame>("fmeDisplay_4");
    const auto &readOut = find<QFrame>("fmeDisplay_2");
    for (const int width : {1366, 960, 1366}) {
        screen_->resize(width, 480);
        const bool twoRows = width == 960;
        QTRY_COMPARE(readOut.mapTo(screen_.get(), QPoint()).y() >= options.mapTo(screen_.get(), QPoint(0, options.height())).y(),
                     twoRows);
        QVERIFY(find<QCheckBox>("chk_1").width() >= find<QCheckBox>("chk_1").minimumSizeHint().width());
    }
}

void frmPestMGraphTest::focusFramesTheGraph()
{
    auto &edge = find<QWidget>("focusEdge");
    QVERIFY(!edge.isVisible());
    chGraph().setFocus();
    QVERIFY(edge.isVisible());
    QCOMPARE(edge.geometry(), find<QWidget>("fmeGraph").rect());
    find<QPushButton>("cmd_0").setFocus();
    QVERIFY(!edge.isVisible());
}

void frmPestMGraphTest::namesAreWholeAndSpoken()
{
    combo("cmbBCount").setListIndex(0);
    QCOMPARE(combo("cbo1").accessibleName(), QStringLiteral("Pest 2"));
    const QString name(60, u'n');
    combo("cbo0").setItemText(0, QStringLiteral("False codling moth"));
    combo("cbo0").setListIndex(0);
    combo("cbo1").setItemText(1, name);
    combo("cbo1").setListIndex(1);
    combo("cbo_6").setListIndex(10);
    click("cmd_0");
    const auto &label = find<QLabel>("lblPointVal_1");
    QTest::mouseClick(&chGraph(), Qt::LeftButton, {}, chGraph().positionOf({1, 1}).value());
    QCOMPARE(label.text(), QStringLiteral("False codling moth"));
    QTRY_VERIFY(label.width() >= label.sizeHint().width());
    QTest::mouseClick(&chGraph(), Qt::LeftButton, {}, chGraph().positionOf({2, 1}).value());
    QVERIFY(label.text().endsWith(u'\u2026'));
    QCOMPARE(label.toolTip(), name);
    click("opt_1");
    combo("cmbBCount").setListIndex(0);
    QCOMPARE(combo("cbo1").accessibleName(), QStringLiteral("Block 2"));
}

void frmPestMGraphTest::linesByDateHaveMarkers()
{
    const auto shown = [this] { return chGraph().model().series(1).SeriesMarker.Show; };
    combo("cmbBCount").setListIndex(0);
    click("OptW_1");
    click("cmd_0");
    QVERIFY(!shown());
    combo("cbo_6").setListIndex(combo("cbo_6").findText(QStringLiteral("2dLine")));
    QVERIFY(shown() && find<QCheckBox>("chk_0").isChecked());
    QVERIFY(!chGraph().model().unitRows().empty());
    click("OptW_0");
    QVERIFY(!find<QCheckBox>("chk_0").isChecked());
    // The user's choice stays.
    click("OptW_1");
    click("chk_0");
    click("cmd_0");
    QVERIFY(!shown());
}

void frmPestMGraphTest::readOutNamesTheSeries()
{
    combo("cmbBCount").setListIndex(0);
    click("cmd_0");
    const chart::PointIndex point{3, 11};
    QTest::mouseClick(&chGraph(), Qt::LeftButton, {}, chGraph().positionOf(point).value());
    QCOMPARE(host_->status, chGraph().pointText(point));
    QVERIFY2(host_->status.contains(QStringLiteral(", week ")), qPrintable(host_->status));
    QCOMPARE(labels(), QStringLiteral("11|20"));
    click("cmd_0");
    QCOMPARE(host_->status, QString());
    QCOMPARE(labels(), QStringLiteral("|"));
}

void frmPestMGraphTest::printing()
{
    combo("cmbBCount").setListIndex(0);
    click("cmd_0");
    host_->dialogs().queuePrinter(QString());
    click("cmd_4");
    QCOMPARE(host_->status, QString());
    const QString file = farm_->appPath() + QStringLiteral("/graph.pdf");
    host_->dialogs().queuePrinter(file);
    click("cmd_4");
    QFile pdf(file);
    QVERIFY(pdf.open(QIODevice::ReadOnly));
    QVERIFY(pdf.read(5) == "%PDF-");
    QCOMPARE(host_->status, QStringLiteral("Graph saved as %1").arg(QDir::toNativeSeparators(file)));
    QCOMPARE(chGraph().model().TitleText(), QString());
    const QImage picture = QGuiApplication::clipboard()->image();
    QVERIFY(picture.width() > picture.height());
    QVERIFY(host_->failure.isEmpty());
    // A path that cannot be written raises no box.
    host_->dialogs().queuePrinter(farm_->appPath() + QStringLiteral("/no such folder/graph.pdf"));
    click("cmd_4");
    QVERIFY(!host_->failure.isEmpty());
}

QTEST_MAIN(frmPestMGraphTest)
#include "frmPestMGraphTest.moc"
