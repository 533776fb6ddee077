// SPDX-License-Identifier: GPL-3.0-or-later
#include "AnalysisBench.h"

#include "Measure.h"
#include "RawSqlite.h"
#include "analysis/LeaveFilter.h"
#include "analysis/ModFertPM.h"
#include "analysis/frmMonLeave.h"
#include "fakes/QueuedDialogs.h"
#include "platform/controls/ItemCombo.h"
#include "shell/MDI_Monitoring.h"
#include "store/Schema.h"
#include "store/Upgrades.h"

#include <QAbstractButton>
#include <QDir>
#include <QTemporaryDir>

#include <map>
#include <memory>

namespace
{

constexpr int Plantings = 5000;
constexpr int Groups = 5;

constexpr auto Numbers = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) ";

void insert(RawSqlite &file, int rows, const char *into, const char *select)
{
    file.run(qPrintable(QLatin1String(into) + u' ' + QString::fromLatin1(Numbers).arg(rows) + QLatin1String(select)));
}

/// 5,000 plantings in five crop groups and a number of leaf analyses, and the program with their screen open.
class AnalysisFarm
{
public:
    explicit AnalysisFarm(int analyses) : folder_(QDir::current().filePath(QStringLiteral("analyses-XXXXXX")))
    {
        QDir(folder_.path()).mkpath(QStringLiteral("Databases"));
        for (const store::DatabaseFile file : store::AllDatabaseFiles) {
            store::createDatabaseFile(file, path(file));
        }
        fillMain();
        fillPest(analyses);
        window_ = std::make_unique<MDI_Monitoring>(
            dialogs_,
            std::vector<MenuEntry>{{QStringLiteral("imLeave"), ZeroPosition::First, true, QStringLiteral("Leaf"),
                                    [](ScreenHost &host, QWidget *parent) { return new frmMonLeave(host, parent); }}});
        window_->load(folder_.path());
        window_->session().CurrentFarmID = 1;
        window_->resize(1366, 768);
        window_->show();
        QMetaObject::invokeMethod(&find<QAbstractButton>("imLeave"), "click");
    }

    QString path(store::DatabaseFile file) const
    {
        return folder_.filePath(QStringLiteral("Databases/") + store::fileName(file));
    }
    template <typename Control> Control &find(const char *name) { return *window_->findChild<Control *>(QLatin1String(name)); }
    clsPestMONNew &store() { return window_->objPestMON(); }

private:
    void fillMain()
    {
        RawSqlite file(path(store::DatabaseFile::Main));
        file.run("BEGIN");
        insert(file, 1, "INSERT INTO tblFarms (FarmID, Farm, isactive)", "SELECT i, 'Farm', -1 FROM n");
        insert(file, Groups, "INSERT INTO tblCrGroup (CrGrID, [Group])", "SELECT i, 'Group ' || i FROM n");
        insert(file, Groups, "INSERT INTO tblCrType (CrTyID, Type, CrGrID)", "SELECT i, 'Type ' || i, i FROM n");
        insert(file, 10 * Groups, "INSERT INTO tblCrVariety (CrVaID, Variety, CrTyID)",
               "SELECT i, 'Variety ' || i, 1 + i % 5 FROM n");
        insert(file, 500, "INSERT INTO tblBlock (BlockID, Block, FarmID, NoofMpoints, active)",
               "SELECT i, 'Block ' || i, 1, 20, -1 FROM n");
        insert(file, Plantings, "INSERT INTO tblBlockPlant (BlockPID, BlockID, PBlock, PBActive, CrVaID)",
               "SELECT i, 1 + i % 500, 'Planting ' || i, -1, 1 + i % 50 FROM n");
        file.run("COMMIT");
    }
    void fillPest(int analyses)
    {
        RawSqlite file(path(store::DatabaseFile::Pest));
        file.run("BEGIN");
        insert(file, analyses,
               "INSERT INTO tblLeaveAnalysis (BlockPID, LADate, LAPart, LASeason, LA_N, LA_P, LA_K, LA_Ca, LA_Mg, LA_Na, LA_Mn, "
               "LA_Fe, LA_Cu, LA_Zn, LA_B)",
               "SELECT 1 + i % 5000, 43000 + i / 7, 'Stem', 'Post Harvest', 2.1 + i % 7, 0.14, 1.1, 4.2, 0.38, 0.05, 28 + i % 9, "
               "130.5, 9, 57.25, 74 FROM n");
        file.run("COMMIT");
    }

    QTemporaryDir folder_;
    QueuedDialogs dialogs_;
    std::unique_ptr<MDI_Monitoring> window_;
};

std::map<int, AnalysisFarm> &farms()
{
    static std::map<int, AnalysisFarm> held;
    return held;
}

AnalysisFarm &farmOf(int analyses)
{
    return farms().try_emplace(analyses, analyses).first->second;
}

void fillList(benchmark::State &state)
{
    AnalysisFarm &farm = farmOf(static_cast<int>(state.range(0)));
    auto &grid = farm.find<controls::FlexGrid>("grdLeave");
    RawSqlite raw(farm.path(store::DatabaseFile::Pest));
    sqlite3_stmt *scan = raw.prepare("SELECT tblLeaveAnalysis.*, tblTempBlockPlant.tPBlock FROM tblTempBlockPlant INNER JOIN "
                                     "tblLeaveAnalysis ON tblTempBlockPlant.tBlockPID = tblLeaveAnalysis.BlockPID "
                                     "WHERE LADate >= 36526 AND LADate <= 60000 AND PBActive = -1 "
                                     "ORDER BY tblTempBlockPlant.tPBlock, LADate, LeaveAnalysisID");
    compare(
        state, [&] { Fill_LeaveGrid(grid, analysisKind(u"Leaf"), QDate(2000, 1, 1), QDate(2060, 1, 1), farm.store()); },
        [&] { raw.step(scan); });
    state.counters["rows"] = grid.Rows() - 2;
}

/// The baseline is the same rule on plain numbers; "ours" is the whole of a click on the filter, its lists and the selection
/// included.
void filterList(benchmark::State &state)
{
    AnalysisFarm &farm = farmOf(static_cast<int>(state.range(0)));
    auto &grid = farm.find<controls::FlexGrid>("grdLeave");
    Fill_LeaveGrid(grid, analysisKind(u"Leaf"), QDate(2000, 1, 1), QDate(2060, 1, 1), farm.store());
    auto &blocks = farm.find<controls::ItemCombo>("cmbBlock");
    blocks.Clear();
    blocks.AddItem(QStringLiteral("Planting 7"), 7);
    const std::vector<LeaveRowKeys> rows(static_cast<std::size_t>(state.range(0)), LeaveRowKeys{1, 1, 1, 7});
    int index = -1;
    compare(
        state,
        [&] {
            index = index == 0 ? -1 : 0;
            blocks.setListIndex(index);
        },
        [&] {
            benchmark::DoNotOptimize(filterRows(rows, {0, 0, 0, 7}, 1));
        });
}

} // namespace

void registerAnalysisBenchmarks()
{
    registerRows({{"List the analyses", "analyses", fillList, {5000, 10000, 20000}, 21},
                  {"Filter the analyses", "analyses", filterList, {5000, 10000, 20000}, 21}});
}

void closeAnalysisFarms()
{
    farms().clear();
}
