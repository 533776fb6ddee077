// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/Plot.h"
#include "SampleChart.h"

#include <QApplication>
#include <QTest>

#include <algorithm>

using namespace chart;

/// What is drawn where: series, ranges, texts and the points under the pointer, for every kind of chart.
class PlotTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyPointIsFoundWhereItIsDrawn_data() { addTypes(); }
    void everyPointIsFoundWhereItIsDrawn();
    void anEmptyCellHasNoPoint_data() { addTypes(); }
    void anEmptyCellHasNoPoint();
    void axesAndLegendShowTheTable();
    void xyCountsItsRows();
    void unitRowsAreLabelledWhereNotAllFit();
    void withoutNumbersNoAxisTexts();
    void valueLabelsNeverCover_data() { addTypes(); }
    void valueLabelsNeverCover();
    void zerosLeaveBarsWhole();
    void slicesAreSums();
    void aMixedChartDrawsEachSeriesByItsType();
    void longNamesBreakTheLegend();
    void oneRowIsCentred();

private:
    static void addTypes();
    static Plot plotOf(const Chart &model, const QSize &size = QSize(900, 450));
    static QStringList texts(const std::vector<AxisTick> &ticks);
};

void PlotTest::addTypes()
{
    QTest::addColumn<ChartType>("type");
    for (const NamedType &each : ChartTypes) {
        QTest::newRow(each.name) << each.type;
    }
}

Plot PlotTest::plotOf(const Chart &model, const QSize &size)
{
    return Plot(model, PlotColours::light(), QApplication::font(), size);
}

QStringList PlotTest::texts(const std::vector<AxisTick> &ticks)
{
    QStringList texts;
    std::transform(ticks.begin(), ticks.end(), std::back_inserter(texts), [](const AxisTick &tick) { return tick.text; });
    return texts;
}

void PlotTest::everyPointIsFoundWhereItIsDrawn()
{
    QFETCH(ChartType, type);
    Chart model;
    fillChart(model, type, {{40, 21, 0, 12}, {11, 35, 17, 30}, {3, 9, 26, 4}});
    const Plot plot = plotOf(model);
    const bool pie = type == ChartType::Pie2d;
    for (int series = 1; series <= 3; ++series) {
        const auto points = plot.pointsOf(series);
        QCOMPARE(points.size(), pie ? std::size_t(1) : std::size_t(4));
        for (const PointIndex &index : points) {
            const DrawnPoint *point = plot.drawnPoint(index);
            QVERIFY(point);
            QVERIFY(pie || point->value == model.ChartData().value(index.point, series));
            QVERIFY(plot.pointAt(point->anchor) == index);
            QVERIFY(!plot.ringOf(index).isEmpty());
        }
    }
    QVERIFY(!plot.pointAt(QPointF(2, 2)));
    QVERIFY(!plot.pointAt(QPointF(450, 445)));
}

void PlotTest::anEmptyCellHasNoPoint()
{
    QFETCH(ChartType, type);
    Chart model;
    fillChart(model, type, {{5, {}, 0, {}, 7}, {{}, {}, {}, {}, {}}});
    const Plot plot = plotOf(model);
    QCOMPARE(plot.legendTexts(), QStringList({"S1", "S2"}));
    QVERIFY(plot.pointsOf(2).empty());
    QVERIFY(!plot.drawnPoint({1, 2}));
    QVERIFY(type == ChartType::Pie2d || plot.drawnPoint({1, 3}));
}

void PlotTest::axesAndLegendShowTheTable()
{
    Chart model;
    fillChart(model, ChartType::Line2d, {wave(53, 1), wave(53, 2)});
    const Plot plot = plotOf(model);
    QCOMPARE(plot.legendTexts(), QStringList({"S1", "S2"}));
    QCOMPARE(plot.rowTicks().size(), std::size_t(53));
    QCOMPARE(plot.rowTicks().back().text, QStringLiteral("53"));
    QCOMPARE(texts(plot.valueTicks()).first(), QStringLiteral("0"));
    QVERIFY(plot.frame().high >= 22.0);
    // Ticks and points share one scale.
    const DrawnPoint *point = plot.drawnPoint({1, 1});
    QCOMPARE(point->anchor.y(), plot.frame().y(5.0));
    QVERIFY(plot.frame().front.contains(point->anchor));
    model.setShowLegend(false);
    QVERIFY(plotOf(model).legendRectangle().isEmpty());
}

void PlotTest::xyCountsItsRows()
{
    Chart model;
    fillChart(model, ChartType::XY2d, {{1, 2, 3}});
    model.setRow(2);
    model.setRowLabel(QStringLiteral("15 Mar"));
    QCOMPARE(texts(plotOf(model).rowTicks()), QStringList({"1", "2", "3"}));
    model.setChartType(ChartType::Line2d);
    QCOMPARE(texts(plotOf(model).rowTicks()), QStringList({"1", "15 Mar", "3"}));
}

void PlotTest::unitRowsAreLabelledWhereNotAllFit()
{
    Chart model;
    fillChart(model, ChartType::Line2d, {wave(365, 0)});
    std::vector<int> months;
    for (int row = 15; row <= 365; row += 30) {
        months.push_back(row);
    }
    model.setUnitRows(months);
    const Plot plot = plotOf(model);
    QVERIFY(plot.rowTicks().size() > 3);
    for (std::size_t tick = 0; tick < plot.rowTicks().size(); ++tick) {
        QVERIFY(std::find(months.begin(), months.end(), static_cast<int>(plot.rowTicks()[tick].position)) != months.end());
    }
}

void PlotTest::withoutNumbersNoAxisTexts()
{
    Chart model;
    QVERIFY(plotOf(model).valueTicks().empty());
    fillChart(model, ChartType::Bar2d, {{{}, {}}});
    QVERIFY(plotOf(model).valueTicks().empty());
    QCOMPARE(texts(plotOf(model).rowTicks()), QStringList({"1", "2"}));
    fillChart(model, ChartType::Bar2d, {{0, {}}});
    QCOMPARE(texts(plotOf(model).valueTicks()), QStringList({"0", "1"}));
}

void PlotTest::valueLabelsNeverCover()
{
    QFETCH(ChartType, type);
    Chart model;
    fillChart(model, type, {wave(365, 1), wave(365, 2), wave(365, 3), wave(365, 4), wave(365, 5)});
    for (int column = 1; column <= 5; ++column) {
        model.series(column).DataPointLabel.LocationType = LabelLocation::AbovePoint;
        model.series(column).SeriesMarker.Show = true;
    }
    const Plot plot = plotOf(model);
    std::vector<QPointF> markers;
    for (int column = 1; column <= 5; ++column) {
        for (const PointIndex &index : plot.pointsOf(column)) {
            markers.push_back(plot.drawnPoint(index)->anchor);
        }
    }
    const auto &labels = plot.valueLabels();
    QCOMPARE(labels.empty(), type == ChartType::Pie2d);
    for (std::size_t one = 0; one < labels.size(); ++one) {
        QVERIFY(labels[one].rectangle.top() >= plot.legendRectangle().bottom());
        for (std::size_t two = one + 1; two < labels.size(); ++two) {
            QVERIFY(!labels[one].rectangle.intersects(labels[two].rectangle));
        }
        const auto isUnder = [&rectangle = labels[one].rectangle](const QPointF &marker) { return rectangle.contains(marker); };
        QVERIFY(std::none_of(markers.begin(), markers.end(), isUnder));
    }
    // The label of the highest value is never left out.
    QVERIFY(type == ChartType::Pie2d || labels.front().text == QStringLiteral("22"));
}

void PlotTest::zerosLeaveBarsWhole()
{
    Chart model;
    const std::vector<std::optional<double>> zeros(40, 0.0);
    fillChart(model, ChartType::Bar2d, {wave(40, 1), zeros, zeros});
    for (int column = 1; column <= 3; ++column) {
        model.series(column).DataPointLabel.LocationType = LabelLocation::AbovePoint;
    }
    const Plot plot = plotOf(model);
    bool hasZero = false;
    for (const auto &label : plot.valueLabels()) {
        if (label.text == QLatin1String("0")) {
            hasZero = true;
            for (const PointIndex &index : plot.pointsOf(1)) {
                QVERIFY(!plot.drawnPoint(index)->body.intersects(label.rectangle));
            }
        }
    }
    QVERIFY(hasZero);
}

void PlotTest::slicesAreSums()
{
    Chart model;
    fillChart(model, ChartType::Pie2d, {{30, {}, 30}, {0, 0, 0}, {20, 10, 10}, {{}, {}, {}}});
    const Plot plot = plotOf(model);
    QCOMPARE(plot.drawnPoint({1, 1})->value, 60.0);
    QCOMPARE(plot.drawnPoint({3, 1})->value, 40.0);
    QVERIFY(!plot.drawnPoint({2, 1}));
    QVERIFY(!plot.drawnPoint({4, 1}));
    // From twelve o'clock, clockwise: the first has three fifths.
    const QPointF centre = plot.frame().pie.center();
    QVERIFY((plot.pointAt(centre + QPointF(20, 0)) == PointIndex{1, 1}));
    QVERIFY((plot.pointAt(centre + QPointF(-20, 0)) == PointIndex{3, 1}));
    fillChart(model, ChartType::Pie2d, {{0}, {7}});
    QVERIFY((plotOf(model).pointAt(centre) == PointIndex{2, 1}));
}

void PlotTest::aMixedChartDrawsEachSeriesByItsType()
{
    Chart model;
    fillChart(model, ChartType::Combination2d, {{10, 20}, {10, 20}, {10, 20}, {10, 20}, {10, 20}});
    const SeriesType types[] = {SeriesType::Bar2d, SeriesType::Line2d, SeriesType::Area2d, SeriesType::Step2d, SeriesType::Pie2d};
    for (int column = 1; column <= 5; ++column) {
        model.series(column).SeriesType = types[column - 1];
    }
    const Plot plot = plotOf(model);
    QVERIFY(plot.drawnPoint({1, 1})->body.height() > 1.0);
    QVERIFY(plot.drawnPoint({2, 1})->body.isNull());
    QCOMPARE(plot.drawnPoint({4, 1})->body.width(), plot.frame().rowWidth());
    QCOMPARE(plot.drawnPoint({5, 1})->value, 30.0);
    QVERIFY(!plot.frame().front.intersects(plot.frame().pie));
    QCOMPARE(plot.frame().high, 20.0);
}

void PlotTest::longNamesBreakTheLegend()
{
    Chart model;
    fillChart(model, ChartType::Area3d, {{1}, {2}, {3}, {4}, {5}});
    for (int column = 1; column <= 5; ++column) {
        model.setColumn(column);
        model.setColumnLabel(QString(30 * column, QLatin1Char('n')));
    }
    for (const int width : {300, 900}) {
        const Plot plot = plotOf(model, QSize(width, 450));
        QVERIFY(plot.legendRectangle().right() <= width);
        QVERIFY(plot.legendRectangle().bottom() < plot.frame().front.top() + plot.frame().depth.y());
    }
}

void PlotTest::oneRowIsCentred()
{
    for (const NamedType &each : ChartTypes) {
        Chart model;
        fillChart(model, each.type, {{4}});
        const Plot plot = plotOf(model);
        QVERIFY2(plot.drawnPoint({1, 1}), each.name);
        QCOMPARE(plot.rowTicks().size(), std::size_t(1));
    }
}

QTEST_MAIN(PlotTest)
#include "PlotTest.moc"
