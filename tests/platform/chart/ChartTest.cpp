// SPDX-License-Identifier: GPL-3.0-or-later
#include "SampleChart.h"
#include "platform/basic/RunTimeError.h"

#include <QSignalSpy>
#include <QTest>

#include <functional>

using namespace chart;

/// The model without a widget: indexes, counts, resets, colours, signals.
class ChartTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void indexesOutsideAreRefused_data();
    void indexesOutsideAreRefused();
    void countsCutAndGrow();
    void aTableResetsLabelsNotStyles();
    void anUnsetCellIsNotZero();
    void theTypeGoesToEverySeries();
    void aResetKeepsTheType();
    void defaultColoursFollowOwnColoursStay();
    void nothingIsEmittedWithoutRepaint();
};

using Change = std::function<void(Chart &)>;
Q_DECLARE_METATYPE(Change)

void ChartTest::indexesOutsideAreRefused_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<int>("error");
    const auto row = [](const char *name, int error, Change change) { QTest::newRow(name) << std::move(change) << error; };
    row("row 0", 9, [](Chart &model) { model.setRow(0); });
    row("row past the end", 9, [](Chart &model) { model.setRow(3); });
    row("column past the end", 9, [](Chart &model) { model.setColumn(3); });
    row("series past the end", 9, [](Chart &model) { model.series(3).Pen.Width = 1; });
    row("label past the end", 9, [](Chart &model) { (void)model.columnLabelAt(3); });
    row("no such axis", 9, [](Chart &model) { model.setAxisTitle(static_cast<AxisId>(4), QString()); });
    row("sixth column", 5, [](Chart &model) { model.setColumnCount(6); });
    row("table of six columns", 5, [](Chart &model) { model.setChartData(DataTable(2, 6)); });
    row("rows below 0", 5, [](Chart &model) { model.setRowCount(-1); });
    row("columns below 0", 5, [](Chart &model) { model.setColumnCount(-1); });
    row("cell below the table", 9, [](Chart &) { DataTable(2, 2).add(3, 1, 1.0); });
}

void ChartTest::indexesOutsideAreRefused()
{
    QFETCH(Change, change);
    QFETCH(int, error);
    Chart model;
    fillChart(model, ChartType::Bar2d, {{1, 2}, {3, 4}});
    int raised = 0;
    try {
        change(model);
    } catch (const basic::RunTimeError &caught) {
        raised = caught.number();
    }
    QCOMPARE(raised, error);
    QCOMPARE(model.RowCount(), 2);
    QCOMPARE(model.SeriesCount(), 2);
    QCOMPARE(model.ChartData().value(2, 2), std::optional(4.0));
    QCOMPARE(model.columnLabelAt(2), QStringLiteral("S2"));
}

void ChartTest::countsCutAndGrow()
{
    Chart model;
    fillChart(model, ChartType::Step2d, {{1, 2, 3}, {4, 5, 6}});
    model.setRow(3);
    model.setColumn(2);
    model.setRowCount(2);
    model.setColumnCount(1);
    QCOMPARE(model.Row(), 2);
    QCOMPARE(model.Column(), 1);
    QCOMPARE(model.Data(), std::optional(2.0));
    model.setRowCount(3);
    model.setColumnCount(2);
    QCOMPARE(model.rowLabelAt(3), QString());
    QCOMPARE(model.columnLabelAt(2), QString());
    QVERIFY(!model.ChartData().value(3, 1));
    QVERIFY(!model.ChartData().value(1, 2));
    QCOMPARE(model.series(2).SeriesType, SeriesType::Step2d);
}

void ChartTest::aTableResetsLabelsNotStyles()
{
    Chart model;
    fillChart(model, ChartType::Bar2d, {{1, 2}, {3, 4}});
    model.setColumnLabelCount(2);
    model.series(1).Pen.Width = 45;
    model.setChartData(DataTable(3, 1));
    QCOMPARE(model.RowCount(), 3);
    QCOMPARE(model.ColumnCount(), 1);
    QCOMPARE(model.ColumnLabelCount(), 0);
    QCOMPARE(model.columnLabelAt(1), QString());
    QCOMPARE(model.rowLabelAt(1), QString());
    QCOMPARE(model.series(1).Pen.Width, 45);
}

void ChartTest::anUnsetCellIsNotZero()
{
    DataTable table(2, 2);
    table.add(1, 1, 0.0);
    QCOMPARE(table.value(1, 1), std::optional(0.0));
    table.add(2, 1, 2.0);
    table.add(2, 1, 0.5);
    QCOMPARE(table.columnSum(1), std::optional(2.5));
    QVERIFY(!table.columnSum(2));
}

void ChartTest::theTypeGoesToEverySeries()
{
    Chart model;
    fillChart(model, ChartType::Combination3d, {{1}, {2}});
    QCOMPARE(model.series(2).SeriesType, SeriesType::Bar3d);
    QVERIFY(model.Chart3d());
    model.series(2).SeriesType = SeriesType::Line3d;
    for (const auto &[type, series, solid] :
         {std::tuple(ChartType::Combination2d, SeriesType::Bar2d, false),
          std::tuple(ChartType::Line2d, SeriesType::Line2d, false), std::tuple(ChartType::Area3d, SeriesType::Area3d, true),
          std::tuple(ChartType::Pie2d, SeriesType::Pie2d, false), std::tuple(ChartType::XY2d, SeriesType::XY2d, false)}) {
        model.setChartType(type);
        QCOMPARE(model.series(1).SeriesType, series);
        QCOMPARE(model.series(2).SeriesType, series);
        QCOMPARE(model.Chart3d(), solid);
    }
}

void ChartTest::aResetKeepsTheType()
{
    Chart model;
    fillChart(model, ChartType::Combination2d, {{1}, {2}});
    const Series fresh = model.series(2);
    Series &changed = model.series(2);
    changed.SeriesType = SeriesType::Area2d;
    changed.Pen = {PenStyle::NoLine, 99};
    changed.Marker = {MarkerStyle::X, 9, 9};
    changed.DataPointLabel.LocationType = LabelLocation::AbovePoint;
    model.setSeriesColour(2, ColourRole::Pen, Qt::black);
    model.resetSeries(2);
    QCOMPARE(changed.SeriesType, SeriesType::Area2d);
    QCOMPARE(changed.Pen.Style, fresh.Pen.Style);
    QCOMPARE(changed.Pen.Width, fresh.Pen.Width);
    QCOMPARE(changed.Marker.Style, fresh.Marker.Style);
    QCOMPARE(changed.Marker.Size, fresh.Marker.Size);
    QCOMPARE(changed.DataPointLabel.LocationType, LabelLocation::None);
    QCOMPARE(model.seriesColour(2, ColourRole::Pen), PlotColours::light().series[1]);
    QVERIFY(model.series(1).Marker.Style != changed.Marker.Style);
}

void ChartTest::defaultColoursFollowOwnColoursStay()
{
    Chart model;
    fillChart(model, ChartType::Bar2d, {{1}, {2}});
    model.setSeriesColour(1, ColourRole::Brush, PlotColours::light().series[0]);
    model.setSeriesColour(2, ColourRole::Brush, Qt::black);
    model.setPlotColours(PlotColours::dark());
    QCOMPARE(model.seriesColour(1, ColourRole::Brush), QColor(0x7C, 0xC4, 0x82));
    QCOMPARE(model.seriesColour(2, ColourRole::Brush), QColor(Qt::black));
    QCOMPARE(model.seriesColour(1, ColourRole::Brush, PlotColours::light()), QColor(0x2E, 0x72, 0x37));
    model.setSeriesColour(2, ColourRole::Brush, PlotColours::dark().series[1]);
    QCOMPARE(model.seriesColour(2, ColourRole::Brush, PlotColours::light()), QColor(0xC2, 0x64, 0x0F));
}

void ChartTest::nothingIsEmittedWithoutRepaint()
{
    Chart model;
    QSignalSpy changes(&model, &Chart::changed);
    model.setRepaint(false);
    fillChart(model, ChartType::Line2d, {{1, 2}});
    model.Refresh();
    QCOMPARE(changes.count(), 0);
    model.setRepaint(true);
    QCOMPARE(changes.count(), 1);
}

QTEST_GUILESS_MAIN(ChartTest)
#include "ChartTest.moc"
