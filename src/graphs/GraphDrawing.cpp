// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/GraphDrawing.h"

#include "platform/basic/Formats.h"
#include "platform/chart/Chart.h"

#include <QLocale>

using chart::AxisId;
using chart::Chart;

namespace
{

constexpr int PenWidth = 20; // twips
constexpr int MarkerSize = 100;

chart::LabelLocation labelLocation(bool labels)
{
    return labels ? chart::LabelLocation::AbovePoint : chart::LabelLocation::None;
}

void setUpSeries(Chart &chGraph, int column, bool markers, bool labels)
{
    chGraph.resetSeries(column);
    chart::Series &series = chGraph.series(column);
    series.Pen.Width = PenWidth;
    series.SeriesMarker = {.Auto = false, .Show = markers};
    series.Marker.Size = MarkerSize;
    series.Marker.PenWidth = PenWidth;
    series.DataPointLabel.LocationType = labelLocation(labels);
}

QString horizontalTitle(GraphAxis axis)
{
    switch (axis) {
    case GraphAxis::Week:
        return QStringLiteral("Week");
    case GraphAxis::Date:
        return QStringLiteral("Date");
    case GraphAxis::Points:
        break;
    }
    return QStringLiteral("Monitor Point");
}

QString rowNoun(GraphAxis axis)
{
    return axis == GraphAxis::Week ? QStringLiteral("week") : axis == GraphAxis::Points ? QStringLiteral("point") : QString();
}

std::vector<int> monthStarts(const GraphCriteria &criteria, int rows)
{
    std::vector<int> starts;
    for (int row = 1; criteria.axis == GraphAxis::Date && row <= rows; ++row) {
        if (criteria.from.addDays(row - 1).day() == 1) {
            starts.push_back(row);
        }
    }
    return starts;
}

void setAxisTitles(Chart &chGraph, const GraphCriteria &criteria)
{
    const QString measure = criteria.measure == GraphMeasure::Count ? QStringLiteral("Count") : QStringLiteral("Yes/No");
    const std::pair<AxisId, QString> titles[] = {{AxisId::X, horizontalTitle(criteria.axis)},
                                                 {AxisId::Y, measure},
                                                 {AxisId::Y2, measure},
                                                 {AxisId::Z, QStringLiteral("Z Axis Title")}};
    for (const auto &[axis, title] : titles) {
        chGraph.setAxisTitle(axis, title);
        chGraph.setAxisTitleVisible(axis, true);
    }
}

} // namespace

const std::array<ChartKind, 12> &chartKinds()
{
    using chart::ChartType;
    static constexpr std::array<ChartKind, 12> kinds{{
        {"3dBar", ChartType::Bar3d},
        {"2dBar", ChartType::Bar2d},
        {"3dLine", ChartType::Line3d},
        {"2dLine", ChartType::Line2d},
        {"3dArea", ChartType::Area3d},
        {"2dArea", ChartType::Area2d},
        {"3dStep", ChartType::Step3d},
        {"2dStep", ChartType::Step2d},
        {"3dCombination", ChartType::Combination3d},
        {"2dCombination", ChartType::Combination2d},
        {"2dPie", ChartType::Pie2d},
        {"2dXY", ChartType::XY2d},
    }};
    return kinds;
}

void drawGraph(Chart &chGraph, const chart::DataTable &GraphData, const GraphCriteria &criteria, bool markers, bool labels)
{
    chGraph.setRepaint(false);
    chGraph.setShowLegend(true);
    chGraph.setAllowSelections(true);
    chGraph.setChartData(GraphData);
    chGraph.setColumnLabelCount(criteria.SeriesCount);
    for (int column = 1; column <= criteria.SeriesCount; ++column) {
        chGraph.setColumn(column);
        chGraph.setColumnLabel(criteria.SeriesName[static_cast<std::size_t>(column) - 1]);
        setUpSeries(chGraph, column, markers, labels);
    }
    for (int row = 1; row <= GraphData.rows(); ++row) {
        chGraph.setRow(row);
        chGraph.setRowLabel(graphPointText(criteria, row));
    }
    chGraph.setRowNoun(rowNoun(criteria.axis));
    chGraph.setUnitRows(monthStarts(criteria, GraphData.rows()));
    setAxisTitles(chGraph, criteria);
    chGraph.setRepaint(true);
}

QString graphPointText(const GraphCriteria &criteria, int point)
{
    if (criteria.axis != GraphAxis::Date) {
        return QString::number(point);
    }
    const QDate day = criteria.from.addDays(point - 1);
    return basic::formatDate(day, u"dd") + u' ' + QLocale().monthName(day.month(), QLocale::ShortFormat);
}

void showGraphMarkers(Chart &chGraph, bool show)
{
    for (int column = 1; column <= chGraph.SeriesCount(); ++column) {
        chGraph.series(column).SeriesMarker.Show = show;
    }
    chGraph.Refresh();
}

void showGraphLabels(Chart &chGraph, bool show)
{
    for (int column = 1; column <= chGraph.SeriesCount(); ++column) {
        chGraph.series(column).DataPointLabel.LocationType = labelLocation(show);
    }
    chGraph.Refresh();
}
