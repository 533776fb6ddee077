// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/GraphSeries.h"

#include "GraphFarm.h"
#include "graphs/GraphDrawing.h"
#include "platform/chart/Chart.h"
#include "store/clsPestMONNew.h"

#include <QLocale>
#include <QTest>

using Table = QList<QPair<QPair<int, int>, double>>;

/// The table behind the chart against sums worked out by hand.
class GraphSeriesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void weeksAddUpAndEmptyStaysEmpty();
    void datesCountFromTheFirstDay();
    void pointsOfABlock();
    void yesNoCountsRecords();
    void whatIsNotCompletedAddsNothing();
    void scopesAndGaps();
    void outsideTheTableIsAnError();
    void drawnOnTheChart();

private:
    static GraphCriteria criteria(GraphScope scope, std::int32_t fixedItem, std::initializer_list<std::int32_t> series)
    {
        GraphCriteria wanted{.scope = scope, .from = QDate(2026, 1, 1), .to = QDate(2026, 12, 31), .fixedItem = fixedItem};
        for (const std::int32_t key : series) {
            const auto place = static_cast<std::size_t>(wanted.SeriesCount++);
            wanted.SeriesID[place] = key;
            wanted.SeriesName[place] = key == 0 ? QString() : QStringLiteral("Series %1").arg(key);
        }
        return wanted;
    }
    chart::DataTable read(GraphFarm &farm, const GraphCriteria &wanted)
    {
        clsPestMONNew store(farm.session);
        return readGraphData(wanted, store, farm.session);
    }
    /// The cells that are not empty: ((row, series), value).
    static Table filled(const chart::DataTable &table)
    {
        Table cells;
        for (int series = 1; series <= table.columns(); ++series) {
            for (int row = 1; row <= table.rows(); ++row) {
                if (const std::optional<double> value = table.value(row, series)) {
                    cells.append({{row, series}, *value});
                }
            }
        }
        return cells;
    }
};

void GraphSeriesTest::weeksAddUpAndEmptyStaysEmpty()
{
    GraphFarm farm;
    farm.found({.week = 11, .count = 4});
    farm.found({.week = 11, .count = 3});
    farm.found({.week = 12, .count = 0});
    farm.found({.week = 13, .count = {}});
    farm.found({.week = 53, .completed = QDate(2026, 12, 31), .count = 9});
    farm.found({.week = 11, .method = 2, .count = 50});
    const chart::DataTable table = read(farm, criteria(GraphScope::PerBlock, 1, {1, 2}));
    QCOMPARE(table.rows(), 53);
    QCOMPARE(filled(table), (Table{{{11, 1}, 7}, {{12, 1}, 0}, {{53, 1}, 9}}));
}

void GraphSeriesTest::datesCountFromTheFirstDay()
{
    GraphFarm farm;
    farm.found({.completed = QDate(2026, 3, 10), .count = 2});
    farm.found({.completed = QDate(2026, 3, 12), .count = 5});
    farm.found({.completed = QDate(2026, 3, 13), .count = 8});
    GraphCriteria wanted = criteria(GraphScope::PerBlock, 1, {1});
    wanted.axis = GraphAxis::Date;
    wanted.from = QDate(2026, 3, 10);
    wanted.to = QDate(2026, 3, 12);
    const chart::DataTable table = read(farm, wanted);
    QCOMPARE(table.rows(), 4);
    QCOMPARE(filled(table), (Table{{{1, 1}, 2}, {{3, 1}, 5}}));

    wanted.to = wanted.from;
    QCOMPARE(read(farm, wanted).rows(), 2);
    wanted.to = wanted.from.addDays(-3);
    QCOMPARE(read(farm, wanted).rows(), 1);
}

void GraphSeriesTest::pointsOfABlock()
{
    GraphFarm farm;
    const int first = farm.found({});
    const int second = farm.found({.week = 12});
    farm.foundAtPoint(first, 1, 1, 0, 2);
    farm.foundAtPoint(first, 1, 1, 1, 3);
    farm.foundAtPoint(second, 1, 1, 3, 4);
    farm.foundAtPoint(second, 2, 1, 2, 70);
    GraphCriteria wanted = criteria(GraphScope::PerBlock, 1, {1});
    wanted.axis = GraphAxis::Points;
    farm.session.CurrentBlockID = 1;
    const chart::DataTable table = read(farm, wanted);
    QCOMPARE(table.rows(), 4);
    QCOMPARE(filled(table), (Table{{{1, 1}, 5}, {{3, 1}, 4}}));

    // A block without a number of points has five.
    farm.session.CurrentBlockID = 2;
    wanted.fixedItem = 2;
    const chart::DataTable other = read(farm, wanted);
    QCOMPARE(other.rows(), 6);
    QCOMPARE(filled(other), (Table{{{2, 1}, 70}}));
}

void GraphSeriesTest::yesNoCountsRecords()
{
    GraphFarm farm;
    farm.found({.week = 10, .method = 2, .yes = 1});
    farm.found({.week = 10, .method = 2, .yes = 6});
    farm.found({.week = 10, .method = 2, .yes = 0});
    farm.found({.week = 10, .method = 2, .yes = {}});
    const int atPoints = farm.found({.week = 20, .method = 2, .yes = 0});
    farm.foundAtPoint(atPoints, 1, 1, 2, 0, true);
    farm.foundAtPoint(atPoints, 1, 1, 3, 0, false);
    GraphCriteria wanted = criteria(GraphScope::PerBlock, 1, {1});
    wanted.measure = GraphMeasure::YesNo;
    QCOMPARE(filled(read(farm, wanted)), (Table{{{10, 1}, 2}}));
    wanted.axis = GraphAxis::Points;
    farm.session.CurrentBlockID = 1;
    QCOMPARE(filled(read(farm, wanted)), (Table{{{2, 1}, 1}}));
}

void GraphSeriesTest::whatIsNotCompletedAddsNothing()
{
    GraphFarm farm;
    farm.found({.week = 8, .completed = {}, .method = 2, .yes = 1, .done = false});
    farm.found({.week = 8, .completed = {}, .count = 1, .done = false});
    farm.found({.week = 8, .count = 2, .done = false});
    farm.found({.week = 8, .method = 2, .yes = 1, .neverCompleted = true});
    GraphCriteria wanted = criteria(GraphScope::Farm, 0, {1});
    QVERIFY(filled(read(farm, wanted)).isEmpty());
    wanted.measure = GraphMeasure::YesNo;
    QVERIFY(filled(read(farm, wanted)).isEmpty());
}

void GraphSeriesTest::scopesAndGaps()
{
    GraphFarm farm;
    farm.found({.week = 5, .block = 1, .pest = 1, .count = 1});
    farm.found({.week = 5, .block = 2, .pest = 1, .count = 20});
    farm.found({.week = 5, .block = 1, .pest = 3, .count = 300});
    QCOMPARE(filled(read(farm, criteria(GraphScope::PerPest, 1, {2, 1}))), (Table{{{5, 1}, 20}, {{5, 2}, 1}}));
    QCOMPARE(farm.session.CurrentBlockID, 1);
    QCOMPARE(farm.session.CurrentCTargetID, 1);
    // The series between stays empty but counts.
    const chart::DataTable table = read(farm, criteria(GraphScope::Farm, 0, {1, 0, 3}));
    QCOMPARE(table.columns(), 3);
    QCOMPARE(filled(table), (Table{{{5, 1}, 21}, {{5, 3}, 300}}));
    QCOMPARE(farm.session.CurrentBlockID, 0);
}

void GraphSeriesTest::outsideTheTableIsAnError()
{
    GraphFarm farm;
    farm.found({.week = 54, .count = 1});
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, read(farm, criteria(GraphScope::PerBlock, 1, {1})));

    // Chosen by its issue date, but completed after the period.
    farm.found({.week = 1, .completed = QDate(2026, 3, 20), .method = 2, .pest = 2, .yes = 1, .issued = QDate(2026, 3, 2)});
    GraphCriteria wanted = criteria(GraphScope::PerBlock, 1, {2});
    wanted.measure = GraphMeasure::YesNo;
    wanted.axis = GraphAxis::Date;
    wanted.from = QDate(2026, 3, 1);
    wanted.to = QDate(2026, 3, 10);
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, read(farm, wanted));
}

void GraphSeriesTest::drawnOnTheChart()
{
    chart::Chart chGraph;
    chGraph.setChartType(chart::ChartType::Line3d);
    GraphCriteria wanted = criteria(GraphScope::Farm, 0, {1, 2});
    wanted.axis = GraphAxis::Date;
    wanted.from = QDate(2026, 2, 27);
    wanted.to = QDate(2026, 3, 1);
    chart::DataTable table(4, 2);
    table.add(2, 1, 3);
    drawGraph(chGraph, table, wanted, true, false);
    chGraph.series(1).Pen.Width = 90;
    chGraph.series(1).Marker.Style = chart::MarkerStyle::X;
    drawGraph(chGraph, table, wanted, false, true);

    QCOMPARE(chGraph.chartType(), chart::ChartType::Line3d);
    QCOMPARE(chGraph.RowCount(), 4);
    QCOMPARE(chGraph.SeriesCount(), 2);
    QStringList labels;
    for (int row = 1; row <= 4; ++row) {
        labels.append(chGraph.rowLabelAt(row));
    }
    // Month names are those of the user's locale.
    const QString february = QLocale().monthName(2, QLocale::ShortFormat);
    const QString march = QLocale().monthName(3, QLocale::ShortFormat);
    QCOMPARE(labels.join(u'|'), QStringLiteral("27 %1|28 %1|01 %2|02 %2").arg(february, march));
    QCOMPARE(chGraph.columnLabelAt(2), QStringLiteral("Series 2"));
    QCOMPARE(chGraph.series(1).Pen.Width, 20);
    QVERIFY(chGraph.series(1).Marker.Style != chart::MarkerStyle::X);
    QVERIFY(!chGraph.series(1).SeriesMarker.Auto && !chGraph.series(1).SeriesMarker.Show);
    QCOMPARE(chGraph.series(2).DataPointLabel.LocationType, chart::LabelLocation::AbovePoint);
    QCOMPARE(chGraph.AxisTitle(chart::AxisId::X), QStringLiteral("Date"));
    QCOMPARE(chGraph.AxisTitle(chart::AxisId::Y2), QStringLiteral("Count"));
    QVERIFY(chGraph.AxisTitleVisible(chart::AxisId::Z));
}

QTEST_MAIN(GraphSeriesTest)
#include "GraphSeriesTest.moc"
