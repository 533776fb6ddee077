// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/DataTable.h"

#include <QDate>
#include <QString>

#include <array>
#include <cstdint>
#include <functional>

class clsPestMONNew;
struct SessionContext;

/// What is common to the series: a block with its pests, a pest with its blocks, or the whole farm with its pests.
enum class GraphScope { PerBlock, PerPest, Farm };
enum class GraphMeasure { Count, YesNo };
/// The meaning of the points on the horizontal axis.
enum class GraphAxis { Week, Date, Points };

/// The criteria of one draw.
struct GraphCriteria {
    static constexpr int MaxSeries = 5;

    GraphScope scope = GraphScope::PerBlock;
    GraphMeasure measure = GraphMeasure::Count;
    GraphAxis axis = GraphAxis::Week;
    QDate from;
    QDate to;
    /// The block or pest that all series share; not used for the farm.
    std::int32_t fixedItem = 0;
    /// Up to the last selected one. A blank series between two others has the key 0 and stays empty.
    int SeriesCount = 0;
    std::array<std::int32_t, MaxSeries> SeriesID{};
    std::array<QString, MaxSeries> SeriesName{};
};

/// Number of points on the axis; the table has one more row.
int graphPointCount(const GraphCriteria &criteria, clsPestMONNew &objPestMON, const SessionContext &session);

/// Reads the records of each series and sums them by point. Sets block and pest of the last series in the session. A record
/// outside the points raises error 9.
/// beginSeries is called with the number of each series that is read, from 1.
chart::DataTable readGraphData(
    const GraphCriteria &criteria, clsPestMONNew &objPestMON, SessionContext &session,
    const std::function<void(int)> &beginSeries = [](int) {});
