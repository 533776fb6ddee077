// SPDX-License-Identifier: GPL-3.0-or-later
#include "GraphBench.h"

#include "BigProgram.h"
#include "Measure.h"
#include "RawSqlite.h"
#include "graphs/GraphLists.h"
#include "graphs/GraphSeries.h"
#include "platform/controls/ItemCombo.h"

#include <array>

namespace
{

constexpr int FixedBlock = 7;
constexpr std::int32_t CountMethod = 1;
const QDate From(2017, 9, 1);
const QDate To(2025, 12, 31);

/// The days as the file holds them.
constexpr int FromDay = 42979;
constexpr int ToDay = 46022;

GraphCriteria criteriaFor(GraphScope scope, GraphAxis axis)
{
    GraphCriteria criteria{
        .scope = scope, .axis = axis, .from = From, .to = To, .fixedItem = FixedBlock, .SeriesCount = GraphCriteria::MaxSeries};
    for (std::int32_t series = 0; series < GraphCriteria::MaxSeries; ++series) {
        criteria.SeriesID.at(static_cast<std::size_t>(series)) = series + 1;
        criteria.SeriesName.at(static_cast<std::size_t>(series)) = QStringLiteral("Pest %1").arg(series + 1);
    }
    return criteria;
}

/// What a draw reads, against the queries of its five series alone.
void readSeries(benchmark::State &state, const GraphCriteria &criteria, const QString &baseline, bool ofBlock)
{
    BigProgram &program = programOf(static_cast<int>(state.range(0)));
    SessionContext &session = program.window->session();
    session.CurrentBlockID = FixedBlock;
    RawSqlite raw(program.farm.pestFile());
    sqlite3_stmt *rows = raw.prepare(qPrintable(baseline));
    int touched = 0;
    forgetPeak();
    compare(
        state, [&] { benchmark::DoNotOptimize(readGraphData(criteria, program.window->objPestMON(), session)); },
        [&] {
            touched = 0;
            for (int pest = 1; pest <= GraphCriteria::MaxSeries; ++pest) {
                touched += ofBlock ? raw.step(rows, {pest, FromDay, ToDay, FixedBlock}) : raw.step(rows, {pest, FromDay, ToDay});
            }
        });
    state.counters["rows"] = touched;
    state.counters["peak_MB"] = peakMegabytes();
}

void pointsOfBlock(benchmark::State &state)
{
    readSeries(
        state, criteriaFor(GraphScope::PerBlock, GraphAxis::Points),
        QStringLiteral(
            "SELECT t.*, d.* FROM tblPMTrans t INNER JOIN tblPMData d ON t.PMTransID = d.PMTransID WHERE d.CTargetID = ?1 AND "
            "t.PMTransDateCom >= ?2 AND t.PMTransDateCom <= ?3 AND t.PMTransCom = -1 AND d.BlockID = ?4 ORDER BY "
            "t.PMTransDateCom, t.PMTransID, d.PMBPunt, d.PMDataID"),
        true);
}

constexpr auto TotalsOfPest =
    "SELECT * FROM tblPMDataMax d, tblPMTrans t WHERE d.CTargetID = ?1 AND t.PMMethodID = 1 AND d.PMTransID = t.PMTransID AND "
    "t.PMTransDateCom >= ?2 AND t.PMTransDateCom <= ?3 AND t.PMTransCom = -1%1 ORDER BY "
    "t.PMTransDate, t.PMTransID, d.PMDataMaxID";

void daysOfBlock(benchmark::State &state)
{
    readSeries(state, criteriaFor(GraphScope::PerBlock, GraphAxis::Date),
               QLatin1String(TotalsOfPest).arg(QLatin1String(" AND d.BlockID = ?4")), true);
}

void daysOfFarm(benchmark::State &state)
{
    readSeries(state, criteriaFor(GraphScope::Farm, GraphAxis::Date), QLatin1String(TotalsOfPest).arg(QString()), false);
}

/// The five lists of the farm's pests by their sums, against the ranking alone.
void rankPests(benchmark::State &state)
{
    BigProgram &program = programOf(static_cast<int>(state.range(0)));
    SessionContext &session = program.window->session();
    session.CurrentPMMethodID = CountMethod;
    std::array<controls::ItemCombo, GraphCriteria::MaxSeries> lists;
    const std::array<controls::ItemCombo *, GraphCriteria::MaxSeries> combos{&lists[0], &lists[1], &lists[2], &lists[3],
                                                                             &lists[4]};
    RawSqlite raw(program.farm.pestFile());
    sqlite3_stmt *ranking = raw.prepare(
        "SELECT d.CTargetID, SUM(d.PMCountMax) AS s FROM tblPMTrans t INNER JOIN tblPMDataMax d ON t.PMTransID = d.PMTransID "
        "WHERE t.PMMethodID = 1 AND t.PMTransCom = -1 AND t.PMTransDateCom >= ? AND t.PMTransDateCom <= ? GROUP BY d.CTargetID "
        "ORDER BY s DESC, d.CTargetID");
    compare(
        state,
        [&] {
            Fill_Graph_Pests(combos, program.window->objPestMON(), session, 0, {From, To, clsPestMONNew::HighestFirst});
        },
        [&] {
            raw.step(ranking, {FromDay, ToDay});
        });
    state.counters["rows"] = lists[0].ListCount();
}

} // namespace

void registerGraphs()
{
    constexpr double TwiceRaw = 2.0;
    registerRows({{"Graph by points, 5 pests of a block", "instructions", pointsOfBlock, BigFarm::Sizes, 15, TwiceRaw},
                  {"Graph by days, 5 pests of a block", "instructions", daysOfBlock, BigFarm::Sizes, 15, TwiceRaw},
                  {"Graph by days, 5 pests of the farm", "instructions", daysOfFarm, BigFarm::Sizes, 7, TwiceRaw},
                  {"Graph lists, pests by their sums", "instructions", rankPests, BigFarm::Sizes, 7, TwiceRaw}});
}
