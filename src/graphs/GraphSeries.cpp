// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/GraphSeries.h"

#include "common/MonitoringConstants.h"
#include "common/SessionContext.h"
#include "platform/basic/Numbers.h"
#include "store/clsPestMONNew.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr int WeekPoints = 52;

dao::Recordset openSeries(const GraphCriteria &criteria, clsPestMONNew &objPestMON, const SessionContext &session)
{
    const auto from = basic::SerialDate::fromDate(criteria.from);
    const auto to = basic::SerialDate::fromDate(criteria.to);
    const std::int32_t block = session.CurrentBlockID;
    const std::int32_t pest = session.CurrentCTargetID;
    if (criteria.axis == GraphAxis::Points) {
        return objPestMON.Get_PestData_for_Block(block, pest, from, to);
    }
    return objPestMON.sumsOfPeriod(criteria.measure == GraphMeasure::Count ? CountMethod : YesNoMethod, block, pest, from, to);
}

/// The point of a record and the value that it adds.
class RecordReader
{
public:
    RecordReader(const GraphCriteria &criteria, const dao::Recordset &rows)
        : criteria_(criteria), rows_(rows), completed_(rows.fieldIndex("PMTransDateCom")),
          firstDay_(basic::SerialDate::fromDate(criteria.from).days())
    {
        if (criteria.axis == GraphAxis::Points) {
            pointField_ = rows.fieldIndex("PMBPunt");
            amount_ = rows.fieldIndex(criteria.measure == GraphMeasure::Count ? "PMCount" : "PMYes");
        } else {
            pointField_ = rows.fieldIndex("PMTransWeek");
            amount_ = rows.fieldIndex("Amount");
            highest_ = rows.fieldIndex("Highest");
        }
    }

    void addTo(chart::DataTable &table, int series) const
    {
        const std::optional<basic::SerialDate> completed = rows_.date(completed_);
        if (!completed || completed->isZero() || rows_.isNull(amount_)) {
            return;
        }
        if (highest_) {
            // A text in a damaged file is the highest of its group, while the sum would take it for a number.
            (void)rows_.number(*highest_);
        }
        if (criteria_.axis == GraphAxis::Points && criteria_.measure == GraphMeasure::YesNo) {
            if (rows_.boolean(amount_)) {
                table.add(point(*completed), series, 1.0);
            }
        } else {
            table.add(point(*completed), series, rows_.number(amount_));
        }
    }

private:
    int point(basic::SerialDate completed) const
    {
        switch (criteria_.axis) {
        case GraphAxis::Week:
            return rows_.longValue(pointField_);
        case GraphAxis::Date:
            return basic::toLong32(std::floor(completed.days()) - firstDay_ + 1.0);
        case GraphAxis::Points:
            break;
        }
        const int point = rows_.longValue(pointField_);
        return point == 0 ? 1 : point;
    }

    const GraphCriteria &criteria_;
    const dao::Recordset &rows_;
    int completed_;
    int pointField_ = 0;
    int amount_ = 0;
    std::optional<int> highest_;
    double firstDay_;
};

void takeSeries(const GraphCriteria &criteria, std::int32_t key, SessionContext &session)
{
    switch (criteria.scope) {
    case GraphScope::PerBlock:
        session.CurrentBlockID = criteria.fixedItem;
        session.CurrentCTargetID = key;
        return;
    case GraphScope::PerPest:
        session.CurrentCTargetID = criteria.fixedItem;
        session.CurrentBlockID = key;
        return;
    case GraphScope::Farm:
        session.CurrentBlockID = 0;
        session.CurrentCTargetID = key;
    }
}

} // namespace

int graphPointCount(const GraphCriteria &criteria, clsPestMONNew &objPestMON, const SessionContext &session)
{
    switch (criteria.axis) {
    case GraphAxis::Week:
        return WeekPoints;
    case GraphAxis::Date:
        return std::max(0, static_cast<int>(criteria.from.daysTo(criteria.to)) + 1);
    case GraphAxis::Points:
        break;
    }
    const int points = objPestMON.NoofMPoints_Are(session.CurrentBlockID);
    return points == 0 ? DefaultPoints : points;
}

chart::DataTable readGraphData(const GraphCriteria &criteria, clsPestMONNew &objPestMON, SessionContext &session,
                               const std::function<void(int)> &beginSeries)
{
    chart::DataTable GraphData(graphPointCount(criteria, objPestMON, session) + 1, criteria.SeriesCount);
    for (int series = 1; series <= criteria.SeriesCount; ++series) {
        const auto index = static_cast<std::size_t>(series) - 1;
        takeSeries(criteria, criteria.SeriesID[index], session);
        if (criteria.SeriesName[index].isEmpty()) {
            continue;
        }
        beginSeries(series);
        dao::Recordset rows = openSeries(criteria, objPestMON, session);
        if (rows.Eof()) {
            continue;
        }
        const RecordReader reader(criteria, rows);
        for (; !rows.Eof(); rows.MoveNext()) {
            reader.addTo(GraphData, series);
        }
    }
    return GraphData;
}
