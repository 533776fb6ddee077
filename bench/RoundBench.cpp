// SPDX-License-Identifier: GPL-3.0-or-later
#include "AnalysisBench.h"
#include "BigProgram.h"
#include "BooksBench.h"
#include "GraphBench.h"
#include "Measure.h"
#include "RawSqlite.h"
#include "pestmon/modPestMon.h"
#include "platform/controls/DatePicker.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/ItemCombo.h"
#include "platform/controls/Theme.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Database.h"
#include "shell/FarmApplication.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>

#include <vector>

using pestmon::Clear_Instruction;
using pestmon::Save_Instruction;

namespace
{

int sizeOf(const benchmark::State &state)
{
    return static_cast<int>(state.range(0));
}

void runProcess(const char *path, const QStringList &arguments)
{
    QProcess process;
    process.start(QString::fromLocal8Bit(path), arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0) {
        qFatal("%s did not end well", path);
    }
}

/// When each database was written last.
QList<QDateTime> writeTimes(const BigFarm &farm)
{
    QList<QDateTime> times;
    for (const QFileInfo &file :
         QFileInfo(farm.pestFile()).dir().entryInfoList({QStringLiteral("*.mdb")}, QDir::Files, QDir::Name)) {
        times.append(file.lastModified());
    }
    return times;
}

/// The bar is the empty window plus half a second, so the difference counts, not the ratio.
void start(benchmark::State &state)
{
    const BigFarm farm(sizeOf(state));
    // The first start of a day makes the copy and writes the weeks; a later one finds nothing to write.
    runProcess(START_PROGRAM, {farm.folder()});
    const QList<QDateTime> written = writeTimes(farm);
    compare(
        state, [&] { runProcess(START_PROGRAM, {farm.folder()}); }, [&] { runProcess(EMPTY_PROGRAM, {}); });
    state.counters["over_ms"] = state.counters["ours_ms"] - state.counters["baseline_ms"];
    if (writeTimes(farm) != written) {
        state.SkipWithError("a start with nothing new wrote to the databases");
    }
}

void chooseForSaving(clsPestMONNew &store, int blocks, int points, int pests)
{
    Clear_Instruction(store);
    for (int block = 1; block <= blocks; ++block) {
        store.New_Add_Block_for_Instruction(block, static_cast<std::int16_t>(points));
    }
    for (int pest = 1; pest <= pests; ++pest) {
        store.New_Add_Pest_for_Instruction(pest);
    }
}

void saveInstruction(benchmark::State &state)
{
    const int Blocks = sizeOf(state);
    constexpr int Points = 20;
    constexpr int Pests = 15;
    SessionContext &session = program().window->session();
    clsPestMONNew &store = program().window->objPestMON();
    chooseForSaving(store, Blocks, Points, Pests);
    RawSqlite raw(program().farm.pestFile());
    sqlite3_stmt *data =
        raw.prepare("INSERT INTO tblPMData (PMTransID, BlockID, CTargetID, PMBPunt, PMCount, PMCountUnder, PMCountUpper, "
                    "PMYes, PMYesUnder, PMYesUpper) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    sqlite3_stmt *totals =
        raw.prepare("INSERT INTO tblPMDataMax (PMTransID, BlockID, CTargetID, PMCountMax, PMCountUnderMax, "
                    "PMCountUpperMax, PMYesMax, PMYesUnderMax, PMYesUpperMax) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)");
    int rawInstruction = 10 * BigFarm::Instructions;
    compare(
        state,
        [&] {
            session.CurrentPMTransID = 0;
            session.CurrentPMMethodID = 1;
            if (Save_Instruction(session, store) != clsPestMONNew::Done) {
                state.SkipWithError("not saved");
            }
        },
        [&] {
            ++rawInstruction;
            raw.run("BEGIN");
            for (int block = 1; block <= Blocks; ++block) {
                for (int point = 1; point <= Points; ++point) {
                    for (int pest = 1; pest <= Pests; ++pest) {
                        raw.step(data, {rawInstruction, block, pest, point, 0, 0, 0, 0, 0, 0});
                    }
                }
            }
            for (int row = 0; row < Blocks * Points * Pests; ++row) {
                raw.step(totals, {rawInstruction, 1 + row % Blocks, 1 + row % Pests, 0, 0, 0, 0, 0, 0});
            }
            raw.run("COMMIT");
        });
}

void leaveCell(benchmark::State &state)
{
    const int instructions = sizeOf(state);
    SessionContext &session = programOf(instructions).window->session();
    clsPestMONNew &store = programOf(instructions).window->objPestMON();
    // The first rows of the instruction in the middle.
    const int middle = instructions / 2 + 1;
    const int firstPoint = 50 * instructions + 1;
    const int firstTotal = 5 * instructions / 2 + 1;
    RawSqlite raw(programOf(instructions).farm.pestFile());
    sqlite3_stmt *point = raw.prepare("UPDATE tblPMData SET PMCount = ? WHERE PMDataID = ?");
    sqlite3_stmt *total = raw.prepare("UPDATE tblPMDataMax SET PMCountMax = ? WHERE PMDataMaxID = ?");
    std::int16_t value = 0;
    compare(
        state,
        [&] {
            value = static_cast<std::int16_t>((value + 1) % 1000);
            std::int32_t pointKey = firstPoint;
            std::int32_t totalKey = firstTotal;
            dao::CommitScope scope(*session.dbPest);
            store.Save_PestDataMax(totalKey, middle, 1, {.PMCountMax = value}, clsPestMONNew::Count);
            store.Save_PestData(pointKey, middle, 1, 1, {.PMCount = value}, clsPestMONNew::Count);
            scope.commit();
        },
        [&] {
            const std::int64_t other = value + 1000; // an equal value would not reach the disk
            raw.step(total, {other, firstTotal});
            raw.step(point, {other, firstPoint});
        });
}

/// "own_ms" is what the screen adds to its queries; its bar is a frame of 60 Hz.
void chooseBlock(benchmark::State &state)
{
    constexpr int Points = 20;
    constexpr int Pests = 15;
    BigProgram &program = programOf(sizeOf(state));
    SessionContext &session = program.window->session();
    clsPestMONNew &store = program.window->objPestMON();
    chooseForSaving(store, 1, Points, Pests);
    session.CurrentPMTransID = 0;
    session.CurrentPMMethodID = 1;
    session.CurrentPMMethod = QStringLiteral("Count");
    session.CurrentPMDate = basic::SerialDate(43000.0);
    Save_Instruction(session, store);
    const std::int32_t key = session.CurrentPMTransID;
    program.find<QWidget>("imSpray").setFocus();
    QMetaObject::invokeMethod(&program.find<QAbstractButton>("imSpray"), "click");
    session.CurrentPMTransID = key;
    session.CurrentPMMethod = QStringLiteral("Count");
    auto &combo = program.find<controls::ItemCombo>("cmbBlock");
    combo.Clear();
    combo.AddItem(QStringLiteral("Block 1"), 1);
    RawSqlite raw(program.farm.pestFile());
    sqlite3_stmt *pests = raw.prepare("SELECT * FROM tblPMTarTrans WHERE PMTransID = ? ORDER BY CTargetID");
    sqlite3_stmt *totals = raw.prepare("SELECT * FROM tblPMDataMax WHERE CTargetID = ? AND PMTransID = ? AND BlockID = ?");
    sqlite3_stmt *data =
        raw.prepare("SELECT * FROM tblPMData WHERE PMTransID = ? AND BlockID = ? ORDER BY PMBPunt, CTargetID, PMDataID");
    std::vector<double> queries;
    std::vector<double> whole;
    compare(
        state, [&] { whole.push_back(seconds([&] { combo.setListIndex(0); })); },
        [&] {
            raw.step(pests, {key});
            for (int pest = 1; pest <= Pests; ++pest) {
                raw.step(totals, {pest, key, 1});
            }
            raw.step(data, {key, 1});
        });
    for (int run = 0; run < 20; ++run) {
        queries.push_back(seconds([&] {
            store.No_of_Pests(key);
            for (dao::Recordset rows = store.Get_Pests_For_Transaction(key); !rows.Eof(); rows.MoveNext()) {
                const std::int32_t pest = rows.longValue("CCTargetID");
                store.CTarget_Is(pest);
                store.New_Get_PestDataMax_for_Transaction(1, pest, key);
            }
            for (dao::Recordset rows = store.Get_PestData_for_Block_of_Transaction(key, 1); !rows.Eof(); rows.MoveNext()) {
                benchmark::DoNotOptimize(rows.longValue("PMCount"));
            }
        }));
    }
    state.counters["queries_ms"] = median(queries) * 1e3;
    state.counters["own_ms"] = (median(whole) - median(queries)) * 1e3;
    state.counters["ratio"] = median(queries) * 1e3 / state.counters["baseline_ms"];
}

void listInstructions(benchmark::State &state)
{
    BigProgram &program = programOf(sizeOf(state));
    QMetaObject::invokeMethod(&program.find<QAbstractButton>("imSpray"), "click");
    auto &all = program.find<QRadioButton>("chkAll");
    program.find<controls::DatePicker>("dtpDateFrom").choose(QDate(2000, 1, 1));
    RawSqlite raw(program.farm.pestFile());
    sqlite3_stmt *list =
        raw.prepare("SELECT * FROM tblPMTrans WHERE PMTransDate >= 36526 AND PMTransDate <= 60000 ORDER BY PMTransDate");
    compare(
        state, [&] { all.click(); }, [&] { raw.step(list); });
    state.counters["rows"] = program.find<controls::FlexGrid>("grdGS").Rows();
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    FarmApplication application(argc, argv);
    controls::Theme::apply(application, false);
    const std::vector<std::int64_t> blocks{12, 25, 50};
    registerRows({{"Start to the shown window", "instructions", start, BigFarm::Sizes, 7},
                  {"Save an instruction, 20 points x 15 pests", "blocks", saveInstruction, blocks, 7, 2.0},
                  {"Leave a capture cell", "instructions", leaveCell, BigFarm::Sizes, 100, 1.5},
                  {"Choose a block, 20 points x 15 pests", "instructions", chooseBlock, BigFarm::Sizes, 50, 2.0},
                  {"List a period", "instructions", listInstructions, BigFarm::Sizes, 60, 3.0}});
    registerBooks();
    registerAnalysisBenchmarks();
    registerGraphs();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    closeAnalysisFarms();
    closeProgram();
    return 0;
}
