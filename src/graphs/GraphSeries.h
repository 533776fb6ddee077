// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/DataTable.h"

#include <QDate>
#include <QString>

#include <array>
#include <cstdint>

class clsPestMONNew;
struct SessionContext;

/// What is fixed and what the series are: a block and its pests, a pest and its blocks, or the pests of the whole farm.
enum class GraphScope { PerBlock, PerPest, Farm };
enum class GraphMeasure { Count, YesNo };
/// What the points of the horizontal axis are.
enum class GraphAxis { Week, Date, Points };

/// Everything that one draw was asked for.
struct GraphCriteria {
    static constexpr int MaxSeries = 5;

    GraphScope scope = GraphScope::PerBlock;
    GraphMeasure measure = GraphMeasure::Count;
    GraphAxis axis = GraphAxis::Week;
    QDate from;
    QDate to;
    /// The block or pest that all series share; not used for the farm.
    std::int32_t fixedItem = 0;
    /// Counted up to the last one that is chosen. A series left blank between two others has the key 0 and stays empty.
    int SeriesCount = 0;
    std::array<std::int32_t, MaxSeries> SeriesID{};
    std::array<QString, MaxSeries> SeriesName{};
};

/// Points of the axis; the table has one row more.
int graphPointCount(const GraphCriteria &criteria, clsPestMONNew &objPestMON, const SessionContext &session);

/// Reads the records of each series and adds them up by point. Leaves block and pest of the last series in the session. A record
/// that lies outside the points raises error 9.
chart::DataTable readGraphData(const GraphCriteria &criteria, clsPestMONNew &objPestMON, SessionContext &session);
