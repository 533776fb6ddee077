// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measure.h"
#include "platform/chart/ChartView.h"

#include <QApplication>
#include <QPainter>
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

/// A chart from its table to the painted picture, and in the same run the baseline: a painter that draws the same lines and
/// markers and nothing else. The time shown is the chart's; "baseline_ms" and "ratio" are the counters next to it.
namespace
{

constexpr int Series = 5;
constexpr QSize Size(1200, 600);

/// Up to 90, each series with a wave of its own.
double valueAt(int point, int series)
{
    return std::round(45.0 + 40.0 * std::sin(point * 0.01 * series) + (point * 7 + series) % 5);
}

void drawChart(chart::ChartType type, int points)
{
    chart::DataTable table(points, Series);
    for (int point = 1; point <= points; ++point) {
        for (int series = 1; series <= Series; ++series) {
            table.setValue(point, series, valueAt(point, series));
        }
    }
    chart::ChartView view;
    chart::Chart &model = view.model();
    model.setChartType(type);
    model.setChartData(table);
    model.setColumnLabelCount(Series);
    for (int series = 1; series <= Series; ++series) {
        model.setColumn(series);
        model.setColumnLabel(QStringLiteral("Series %1").arg(series));
        model.series(series).SeriesMarker.Show = true;
    }
    for (int point = 1; point <= points; ++point) {
        model.setRow(point);
        model.setRowLabel(QString::number(point));
    }
    model.setShowLegend(true);
    benchmark::DoNotOptimize(view.picture(Size));
}

void drawMarker(QPainter &painter, const QPointF &index, int series, const std::vector<QPolygonF> &forms)
{
    if (series == 1) {
        painter.drawEllipse(index, 3.33, 3.33);
    } else {
        painter.drawConvexPolygon(forms[static_cast<std::size_t>(series - 2)].translated(index));
    }
}

void drawRaw(int points)
{
    const std::vector<QPolygonF> forms{QPolygonF(QRectF(-3, -3, 6, 6)), QPolygonF({{0, -3.8}, {3.8, 0}, {0, 3.8}, {-3.8, 0}}),
                                       QPolygonF({{0, -3.3}, {3.3, 2.7}, {-3.3, 2.7}}),
                                       QPolygonF({{0, 3.3}, {3.3, -2.7}, {-3.3, -2.7}})};
    QPixmap picture(Size);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int series = 1; series <= Series; ++series) {
        std::vector<QPointF> positions;
        for (int point = 1; point <= points; ++point) {
            positions.emplace_back(60.0 + point * 1080.0 / points, 550.0 - valueAt(point, series) * 5.0);
        }
        std::vector<QLineF> lines;
        for (std::size_t point = 1; point < positions.size(); ++point) {
            lines.emplace_back(positions[point - 1], positions[point]);
        }
        painter.setPen(QPen(Qt::darkGreen, 1.33, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
        painter.setBrush(Qt::darkGreen);
        painter.drawLines(lines.data(), static_cast<int>(lines.size()));
        for (const QPointF &position : positions) {
            drawMarker(painter, position, series, forms);
        }
    }
    painter.end();
    benchmark::DoNotOptimize(picture);
}

template <chart::ChartType type> void paintChart(benchmark::State &state)
{
    const auto points = static_cast<int>(state.range(0));
    compare(
        state, [&] { drawChart(type, points); }, [&] { drawRaw(points); });
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    const std::vector<std::int64_t> points{275, 550, 1100};
    constexpr double ThriceRaw = 3.0;
    using chart::ChartType;
    registerRows({{"Draw a line chart, 5 series", "points", paintChart<ChartType::Line2d>, points, 30, ThriceRaw},
                  {"Draw a solid line chart, 5 series", "points", paintChart<ChartType::Line3d>, points, 30, ThriceRaw},
                  {"Draw a bar chart, 5 series", "points", paintChart<ChartType::Bar2d>, points, 30, ThriceRaw}});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
