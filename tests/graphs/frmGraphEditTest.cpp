// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/frmGraphEdit.h"

#include "fakes/QueuedDialogs.h"
#include "graphs/ColourBox.h"
#include "platform/basic/RunTimeError.h"
#include "platform/chart/Chart.h"
#include "platform/controls/ItemCombo.h"
#include "screens/ShortcutsPage.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using chart::ColourRole;
using controls::ItemCombo;

class frmGraphEditTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void changesGoWithTheSeries();
    void typesOnlyOnACombination();
    void markerTypeOffersAFillColour();
    void textThatIsNoNumber();
    void noSeries();
    void keysOverTheStyles();

private:
    void open() { dialog_ = std::make_unique<frmGraphEdit>(*chart_, dialogs_); }
    template <typename Control> Control &find(const char *name)
    {
        auto *control = dialog_->findChild<Control *>(QLatin1String(name));
        Q_ASSERT(control);
        return *control;
    }
    void choose(const char *combo, int index) { find<ItemCombo>(combo).setListIndex(index); }
    void setText(const char *box, const char *text) { find<QLineEdit>(box).setText(QLatin1String(text)); }

    QueuedDialogs dialogs_;
    std::unique_ptr<chart::Chart> chart_;
    std::unique_ptr<frmGraphEdit> dialog_;
};

void frmGraphEditTest::init()
{
    dialogs_ = {};
    chart_ = std::make_unique<chart::Chart>();
    chart_->setChartData(chart::DataTable(3, 2));
    chart_->setColumn(2);
    chart_->setColumnLabel(QStringLiteral("Thrips"));
}

void frmGraphEditTest::cleanup()
{
    QVERIFY(dialogs_.allAsExpected());
    dialog_.reset();
}

void frmGraphEditTest::changesGoWithTheSeries()
{
    const QColor second = chart_->seriesColour(2, ColourRole::Pen);
    open();
    QCOMPARE(find<ItemCombo>("cmb_0").List(1), QStringLiteral("2 - Thrips"));
    dialogs_.queueColour(QColor(10, 20, 30));
    find<ColourBox>("picColor_0").click();
    setText("txtLW", "45");
    setText("txtSS", "210");
    choose("cmbLineStyle", 8);
    choose("cmb_0", 1);
    QCOMPARE(find<ColourBox>("picColor_0").BackColor(), second);
    dialogs_.queueColour(Qt::red);
    find<ColourBox>("picColor_0").click();
    dialogs_.queueColour({});
    find<ColourBox>("picColor_1").click();
    setText("txtLW", "99");
    find<QPushButton>("cmdGSCancel").click();

    QCOMPARE(chart_->series(1).Pen.Width, 45);
    QCOMPARE(chart_->series(1).Pen.Style, chart::PenStyle::DashDitDit);
    QCOMPARE(chart_->series(1).Marker.Size, 210);
    QCOMPARE(chart_->seriesColour(1, ColourRole::Pen), QColor(10, 20, 30));
    QCOMPARE(chart_->seriesColour(1, ColourRole::Brush), QColor(10, 20, 30));
    QCOMPARE(chart_->series(2).Pen.Width, 20);
    QCOMPARE(chart_->seriesColour(2, ColourRole::Pen), second);

    // OK writes the series that is shown, and it alone.
    open();
    choose("cmb_0", 1);
    setText("txtMLW", "60");
    find<QPushButton>("cmdGSOK").click();
    QCOMPARE(chart_->series(2).Marker.PenWidth, 60);
    QCOMPARE(chart_->series(1).Marker.PenWidth, 20);
}

void frmGraphEditTest::typesOnlyOnACombination()
{
    open();
    QVERIFY(!find<ItemCombo>("cmbChartType").isEnabled());
    chart_->setChartType(chart::ChartType::Combination2d);
    open();
    QVERIFY(find<ItemCombo>("cmbChartType").isEnabled());
    choose("cmb_0", 1);
    choose("cmbChartType", 5);
    find<QPushButton>("cmdGSOK").click();
    QCOMPARE(chart_->series(2).SeriesType, chart::SeriesType::Pie2d);
    QCOMPARE(chart_->series(1).SeriesType, chart::SeriesType::Bar2d);
    chart_->setChartType(chart::ChartType::Combination3d);
    open();
    QCOMPARE(find<ItemCombo>("cmbChartType").ListCount(), 4);
}

void frmGraphEditTest::markerTypeOffersAFillColour()
{
    open();
    dialogs_.queueColour(Qt::blue);
    find<ColourBox>("picColor_1").click();
    choose("cmbSymbolType", 9);
    QVERIFY(find<ColourBox>("picColor_2").isHidden());
    choose("cmbSymbolType", 15);
    QVERIFY(!find<ColourBox>("picColor_2").isHidden());
    QCOMPARE(find<ColourBox>("picColor_2").BackColor(), QColor(Qt::blue));
}

void frmGraphEditTest::textThatIsNoNumber()
{
    open();
    setText("txtLW", "wide");
    choose("cmbLineStyle", 3);
    dialogs_.expectMessage();
    choose("cmb_0", 1);
    QCOMPARE(dialogs_.takeLastText(), QStringLiteral("13 - \"wide\" is not a width or size from 0 to 32767."));
    // What is before the invalid text is applied; the boxes still belong to the first series.
    QCOMPARE(chart_->series(1).Pen.Style, chart::PenStyle::Dotted);
    QCOMPARE(chart_->series(1).Pen.Width, 20);
    QCOMPARE(find<ItemCombo>("cmb_0").ListIndex(), 0);
    setText("txtLW", "30");
    find<QPushButton>("cmdGSOK").click();
    QCOMPARE(chart_->series(1).Pen.Width, 30);
}

void frmGraphEditTest::keysOverTheStyles()
{
    open();
    dialog_->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
    QTest::keyClick(dialog_.get(), Qt::Key_F1);
    const auto *page = dialog_->findChild<ShortcutsPage *>();
    QVERIFY(page);
    QVERIFY(page->text().contains(QLatin1String("Style of the line")));
}

void frmGraphEditTest::noSeries()
{
    chart::Chart empty;
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, frmGraphEdit(empty, dialogs_));
}

QTEST_MAIN(frmGraphEditTest)
#include "frmGraphEditTest.moc"
