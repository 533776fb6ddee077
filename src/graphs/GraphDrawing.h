// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "graphs/GraphSeries.h"
#include "platform/chart/ChartConstants.h"

#include <array>

namespace chart
{
class Chart;
}

struct ChartKind {
    const char *text;
    chart::ChartType chartType;
};
/// In the order of the list of chart types.
const std::array<ChartKind, 12> &chartKinds();

/// Sets the table on the chart with the default style of each series, the labels of points and series, and the axis titles. The
/// chart type stays.
void drawGraph(chart::Chart &chGraph, const chart::DataTable &GraphData, const GraphCriteria &criteria, bool markers,
               bool labels);
/// Text of a point of the axis, counted from 1.
QString graphPointText(const GraphCriteria &criteria, int point);

void showGraphMarkers(chart::Chart &chGraph, bool show);
void showGraphLabels(chart::Chart &chGraph, bool show);
