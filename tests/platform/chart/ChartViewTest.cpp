// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/ChartView.h"
#include "SampleChart.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <cstdlib>

using namespace chart;

/// What the user sees, clicks and types.
class ChartViewTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void imageOfEachType_data() { addTypes(); }
    void imageOfEachType();
    void aPartIsPaintedLikeTheWhole_data() { addTypes(); }
    void aPartIsPaintedLikeTheWhole();
    void narrowBarsAreNotHatched();
    void everyMarkerAndLineIsSeen();
    void paperKeepsSizeAndColours();
    void seriesDifferOnAGreyPrint();
    void aZoomedChartShowsItsLegend();
    void aBarUnderTheLegendOrAnAxisIsNotHit();
    void copyTakesTheTable();
    void aPointIsSelectedBeforeTheClick();
    void arrowsMoveOverGapsAndSeries();
    void withoutSelectionsAClickIsAClick();
    void darkPaletteDarkPaper();

private:
    static void addTypes();
    static int pixelsOf(const QImage &image, const QColor &colour);
};

void ChartViewTest::addTypes()
{
    QTest::addColumn<ChartType>("type");
    for (const NamedType &each : ChartTypes) {
        QTest::newRow(each.name) << each.type;
    }
}

int ChartViewTest::pixelsOf(const QImage &image, const QColor &colour)
{
    const QImage plain = image.convertToFormat(QImage::Format_RGB32);
    std::ptrdiff_t count = 0;
    for (int y = 0; y < plain.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(plain.constScanLine(y));
        count += std::count(line, line + plain.width(), colour.rgb());
    }
    return static_cast<int>(count);
}

void ChartViewTest::imageOfEachType()
{
    QFETCH(ChartType, type);
    ChartView view;
    const QColor blank = PlotColours::light().background;
    const QImage empty = view.picture(QSize(300, 200)).toImage();
    QCOMPARE(pixelsOf(empty, blank), 300 * 200);
    fillChart(view.model(), type, {{5, 9, {}, 4}, {{}, 2, 6, {}}, {1, 1, 8, 3}});
    for (int column = 1; column <= 3; ++column) {
        view.model().series(column).SeriesMarker.Show = true;
    }
    const QImage picture = view.picture(QSize(600, 400), 1.5).toImage();
    QCOMPARE(picture.size(), QSize(900, 600));
    for (std::size_t series = 0; series < 3; ++series) {
        QVERIFY(pixelsOf(picture, PlotColours::light().series[series]) > 20);
    }
    view.EditCopy(QSize(200, 100));
    QCOMPARE(QGuiApplication::clipboard()->pixmap().size(), QSize(200, 100));
}

void ChartViewTest::aPartIsPaintedLikeTheWhole()
{
    QFETCH(ChartType, type);
    ChartView view;
    fillChart(view.model(), type, {wave(40, 1), wave(40, 2), wave(40, 3)});
    for (int column = 1; column <= 3; ++column) {
        view.model().series(column).SeriesMarker.Show = true;
        view.model().series(column).DataPointLabel.LocationType = LabelLocation::AbovePoint;
    }
    view.resize(2000, 1000);
    QImage whole(view.size(), QImage::Format_RGB32);
    view.render(&whole);
    const QRect part(803, 351, 230, 170);
    QImage exposed(part.size(), QImage::Format_RGB32);
    view.render(&exposed, QPoint(), QRegion(part));
    // Clipped lines are blended differently in the last bit.
    const QImage there = whole.copy(part);
    for (int y = 2; y < part.height() - 2; ++y) {
        for (int x = 2; x < part.width() - 2; ++x) {
            const QColor one = exposed.pixelColor(x, y);
            const QColor other = there.pixelColor(x, y);
            const int difference =
                std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) + std::abs(one.blue() - other.blue());
            QVERIFY2(difference <= 24, qPrintable(QStringLiteral("%1, %2").arg(x).arg(y)));
        }
    }
}

void ChartViewTest::narrowBarsAreNotHatched()
{
    for (const auto &[rows, hatched] : {std::pair(53, false), std::pair(3, true)}) {
        ChartView view;
        view.resize(900, 450);
        const Column high(static_cast<std::size_t>(rows), 20);
        fillChart(view.model(), ChartType::Bar2d, {high, high, high, high, high});
        bool even = true;
        const QImage picture = view.picture(view.size()).toImage();
        for (int series = 1; series <= 5; ++series) {
            const QPoint top = view.positionOf({series, 3}).value();
            for (int y = 2; y < 18; ++y) {
                even = even && picture.pixelColor(top.x(), top.y() + y) == picture.pixelColor(top.x(), top.y() + 2);
            }
        }
        QCOMPARE(even, !hatched);
    }
}

void ChartViewTest::everyMarkerAndLineIsSeen()
{
    ChartView view;
    fillChart(view.model(), ChartType::Line2d, {{5, 9, 2}});
    Series &series = view.model().series(1);
    const auto ink = [&view] {
        view.model().Refresh();
        const QImage picture = view.picture(QSize(400, 300)).toImage();
        return 400 * 300 - pixelsOf(picture, PlotColours::light().background);
    };
    series.Pen.Style = PenStyle::NoLine;
    const int none = ink();
    for (int style = 1; style <= 8; ++style) {
        series.Pen.Style = static_cast<PenStyle>(style);
        QVERIFY2(ink() > none + 100, qPrintable(QString::number(style)));
    }
    series.Pen.Style = PenStyle::NoLine;
    series.SeriesMarker.Show = true;
    for (int style = 0; style <= 14; ++style) {
        series.Marker.Style = static_cast<MarkerStyle>(style);
        QVERIFY2(ink() > none + 20, qPrintable(QString::number(style)));
    }
    series.Marker.Style = MarkerStyle::None;
    QCOMPARE(ink(), none);
    // A point between two gaps has no line, but a dot.
    series.Pen.Style = PenStyle::Solid;
    view.model().setChartData(DataTable(3, 1));
    const int gaps = ink();
    view.model().setRow(2);
    view.model().setData(5.0);
    QVERIFY(ink() > gaps + 4);
}

/// A printer has ten times the dots of a screen; the scale of the painter alone decides the size.
void ChartViewTest::paperKeepsSizeAndColours()
{
    ChartView view;
    fillChart(view.model(), ChartType::Bar2d, {{5, 9}});
    view.model().setPlotColours(PlotColours::dark());
    const QRect legend = view.legendRectangle(QSize(300, 200));
    const QPoint chip = legend.topLeft() + QPoint(6, legend.height() / 2);
    QVERIFY(QRect(0, 0, 300, 200).contains(legend));
    for (const int dots : {3780, 37800}) {
        QImage page(600, 400, QImage::Format_RGB32);
        page.setDotsPerMeterX(dots);
        page.setDotsPerMeterY(dots);
        page.fill(Qt::magenta);
        QPainter painter(&page);
        painter.scale(2.0, 2.0);
        view.paintOn(painter, QSize(300, 200));
        QCOMPARE(painter.transform(), QTransform::fromScale(2.0, 2.0));
        painter.end();
        QCOMPARE(page.pixelColor(chip * 2), PlotColours::paper().series[0]);
        QCOMPARE(page.pixelColor(1, 1), PlotColours::light().background);
        QCOMPARE(page.pixelColor(598, 398), PlotColours::light().background);
    }
}

void ChartViewTest::seriesDifferOnAGreyPrint()
{
    const PlotColours paper = PlotColours::paper();
    for (std::size_t series = 1; series < paper.series.size(); ++series) {
        const int difference = qGray(paper.series[series].rgb()) - qGray(paper.series[series - 1].rgb());
        QVERIFY2(std::abs(difference) > 50, qPrintable(QString::number(difference)));
    }
    // Five bars in each of 53 rows: a third of the paper's width must not stay white.
    ChartView view;
    fillChart(view.model(), ChartType::Bar2d, std::vector<Column>(5, Column(53, 9.0)));
    QImage page(1050, 700, QImage::Format_RGB32);
    QPainter painter(&page);
    view.paintOn(painter, page.size());
    painter.end();
    int white = 0;
    for (int x = 100; x < 950; ++x) {
        white += page.pixelColor(x, 400) == paper.background ? 1 : 0;
    }
    QVERIFY2(white < 850 * 0.2, qPrintable(QString::number(white)));
}

void ChartViewTest::aZoomedChartShowsItsLegend()
{
    QWidget viewport;
    viewport.resize(400, 300);
    auto *view = new ChartView(&viewport);
    fillChart(view->model(), ChartType::Bar2d, {{5, 9}});
    view->setGeometry(-500, -900, 1600, 1200);
    viewport.show();
    QVERIFY(QTest::qWaitForWindowExposed(&viewport));
    const QImage seen = viewport.grab().toImage();
    const QColor chip = view->model().plotColours().series[0];
    int pixels = 0;
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 200; ++x) {
            pixels += seen.pixelColor(x, y) == chip ? 1 : 0;
        }
    }
    QVERIFY2(pixels >= 100 && pixels <= 200, qPrintable(QString::number(pixels)));
}

void ChartViewTest::aBarUnderTheLegendOrAnAxisIsNotHit()
{
    QWidget viewport;
    viewport.resize(400, 300);
    auto *view = new ChartView(&viewport);
    fillChart(view->model(), ChartType::Bar2d, {{9, 9}});
    view->setGeometry(-380, -500, 1600, 1200);
    const QPoint underAxis(400, 650);
    const QPoint underLegend(450, 510);
    const QPoint inSight(450, 650);
    QVERIFY(view->pointAt(underAxis) && view->pointAt(underLegend));
    viewport.show();
    QVERIFY(QTest::qWaitForWindowExposed(&viewport));
    QVERIFY(!view->pointAt(underAxis));
    QVERIFY(!view->pointAt(underLegend));
    QCOMPARE(view->pointAt(inSight), std::optional(PointIndex{1, 1}));
}

void ChartViewTest::copyTakesTheTable()
{
    ChartView view;
    fillChart(view.model(), ChartType::Line2d, {{5, std::nullopt}, {7.5, 0}});
    view.model().setAxisTitle(AxisId::X, QStringLiteral("Week"));
    QSignalSpy copied(&view, &ChartView::TableCopied);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(copied.count(), 1);
    QCOMPARE(QGuiApplication::clipboard()->text().replace(u',', u'.'), QStringLiteral("Week\tS1\tS2\n1\t5\t7.5\n2\t\t0\n"));
}

void ChartViewTest::aPointIsSelectedBeforeTheClick()
{
    ChartView view;
    fillChart(view.model(), ChartType::Bar2d, {{5, 9}, {{}, 4}});
    view.resize(600, 400);
    QStringList order;
    connect(&view, &ChartView::PointSelected, this,
            [&order](int series, int point) { order << QStringLiteral("%1/%2").arg(series).arg(point); });
    connect(&view, &ChartView::Click, this, [&order] { order << QStringLiteral("click"); });
    QTest::mouseClick(&view, Qt::LeftButton, {}, *view.positionOf({2, 2}));
    QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(3, 397));
    QTest::mouseClick(&view, Qt::RightButton, {}, *view.positionOf({1, 1}));
    QCOMPARE(order, QStringList({"2/2", "click", "click"}));
    QVERIFY(!view.positionOf({2, 1}));
    QCOMPARE(view.pointText({2, 2}), QStringLiteral("S2, 2: 4"));
}

void ChartViewTest::arrowsMoveOverGapsAndSeries()
{
    ChartView view;
    fillChart(view.model(), ChartType::Line2d, {{5, {}, 9, 1}, {{}, {}, {}, {}}, {{}, 4, {}, {}}});
    view.resize(600, 400);
    QSignalSpy selected(&view, &ChartView::PointSelected);
    const auto press = [&view](Qt::Key key) {
        QTest::keyClick(&view, key);
        const PointIndex index = view.currentPoint().value_or(PointIndex{});
        return QStringLiteral("%1/%2").arg(index.series).arg(index.point);
    };
    QCOMPARE(press(Qt::Key_Right), QStringLiteral("1/1"));
    QCOMPARE(press(Qt::Key_Right), QStringLiteral("1/3"));
    QCOMPARE(press(Qt::Key_Down), QStringLiteral("3/2"));
    QCOMPARE(press(Qt::Key_Down), QStringLiteral("3/2"));
    QCOMPARE(press(Qt::Key_Up), QStringLiteral("1/1"));
    QCOMPARE(press(Qt::Key_End), QStringLiteral("1/4"));
    QCOMPARE(press(Qt::Key_Right), QStringLiteral("1/4"));
    QCOMPARE(press(Qt::Key_Home), QStringLiteral("1/1"));
    QCOMPARE(selected.count(), 6);
    QCOMPARE(QAccessible::queryAccessibleInterface(&view)->text(QAccessible::Name), QStringLiteral("S1, 1: 5"));
    view.model().setRow(1);
    view.model().setColumn(1);
    view.model().setData({});
    QVERIFY(!view.currentPoint());
    view.model().setChartType(ChartType::Pie2d);
    QCOMPARE(press(Qt::Key_Right), QStringLiteral("1/1"));
    QCOMPARE(press(Qt::Key_Right), QStringLiteral("3/1"));
}

void ChartViewTest::withoutSelectionsAClickIsAClick()
{
    ChartView view;
    fillChart(view.model(), ChartType::Area2d, {{5, 9}});
    view.model().setAllowSelections(false);
    view.resize(600, 400);
    QSignalSpy selected(&view, &ChartView::PointSelected);
    QSignalSpy clicked(&view, &ChartView::Click);
    QTest::mouseClick(&view, Qt::LeftButton, {}, *view.positionOf({1, 2}));
    QTest::keyClick(&view, Qt::Key_Right);
    QCOMPARE(selected.count(), 0);
    QCOMPARE(clicked.count(), 1);
}

void ChartViewTest::darkPaletteDarkPaper()
{
    ChartView view;
    fillChart(view.model(), ChartType::Bar2d, {{5, 9}});
    view.resize(300, 200);
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    view.setPalette(dark);
    const QImage screen = view.grab().toImage();
    QCOMPARE(screen.pixelColor(1, 1), PlotColours::dark().background);
    QVERIFY(pixelsOf(screen, PlotColours::dark().series[0]) > 20);
    QCOMPARE(view.picture(QSize(300, 200)).toImage().pixelColor(1, 1), PlotColours::light().background);
}

QTEST_MAIN(ChartViewTest)
#include "ChartViewTest.moc"
