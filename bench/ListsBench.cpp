// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measure.h"
#include "RawSqlite.h"

#include "fakes/QueuedDialogs.h"
#include "mainmodule/ImportDialog.h"
#include "mainmodule/MainModuleWindow.h"
#include "platform/controls/FlexGrid.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"
#include "shell/FarmApplication.h"
#include "store/Staging.h"
#include "store/lists/ListBooks.h"

#include <QClipboard>
#include <QPushButton>
#include <QStackedWidget>
#include <QTemporaryDir>

#include <algorithm>

namespace
{

constexpr int Blocks = 300;
constexpr int Workers = 200;
constexpr int Pests = 500;

/// An office of 300 blocks, 200 workers, 500 pests and some plantings, open in the Main Module.
class Office
{
public:
    explicit Office(std::int64_t plantings)
    {
        createDatabases(databases());
        fillMain(plantings);
        fillPests();
        window_.load(folder_.path());
        window_.resize(1366, 738);
        window_.show();
        QCoreApplication::processEvents();
    }

    mainmodule::MainModuleWindow &window() { return window_; }
    QString path(const QString &name) const { return folder_.filePath(name); }

    void show(const QString &page)
    {
        window_.showPage(page);
        QCoreApplication::processEvents();
    }
    void click(const char *button)
    {
        QWidget *page = window_.findChild<QStackedWidget *>(QStringLiteral("pages"))->currentWidget();
        page->findChild<QPushButton *>(QLatin1String(button))->click();
        QCoreApplication::processEvents();
    }
    std::size_t plantings() const { return window_.farmLists().records(lists::List::Plantings).size(); }

private:
    QString databases() const { return path(QStringLiteral("Databases")); }

    template <typename Body> void fill(store::DatabaseFile file, Body &&body)
    {
        const auto database =
            dao::Workspace::OpenDatabase(databases() + u'/' + store::fileName(file), false, false, store::connectText());
        dao::CommitScope scope(*database);
        body(*database);
        scope.commit();
    }

    void fillMain(std::int64_t plantings)
    {
        fill(store::DatabaseFile::Main, [plantings](dao::Database &database) {
            const auto run = [&database](const QString &sql) { database.Execute(sql); };
            run(QStringLiteral("INSERT INTO tblFarms (FarmID, Farm, isactive) VALUES (1, 'Riverbend', True)"));
            run(QStringLiteral("INSERT INTO tblCrGroup (CrGrID, [Group]) VALUES (1, 'Citrus')"));
            run(QStringLiteral("INSERT INTO tblCrType (CrTyID, CrGrID, Type) VALUES (1, 1, 'Orange')"));
            run(QStringLiteral("INSERT INTO tblCrVariety (CrVaID, CrTyID, Variety) VALUES (1, 1, 'Valencia')"));
            for (int i = 1; i <= Blocks; ++i) {
                run(QStringLiteral("INSERT INTO tblBlock (BlockID, FarmID, Block, NoofMpoints, active) VALUES (%1, 1, 'Block "
                                   "%1', 5, True)")
                        .arg(i));
            }
            for (int i = 1; i <= Workers; ++i) {
                run(QStringLiteral("INSERT INTO tblWorker (WorkerID, WNickName) VALUES (%1, 'Worker %1')").arg(i));
            }
            for (std::int64_t i = 1; i <= plantings; ++i) {
                run(QStringLiteral("INSERT INTO tblBlockPlant (BlockPID, BlockID, PBlock, CrVaID, PBActive) VALUES (%1, %2, "
                                   "'Planting %1', 1, True)")
                        .arg(i)
                        .arg(i % Blocks + 1));
            }
        });
    }

    void fillPests()
    {
        fill(store::DatabaseFile::Spray, [](dao::Database &database) {
            for (int i = 1; i <= Pests; ++i) {
                database.Execute(
                    QStringLiteral("INSERT INTO tblCTarget (CTargetID, ChemTarget, CTType) VALUES (%1, 'Pest %1', 'P')").arg(i));
            }
        });
    }

    QTemporaryDir folder_;
    QueuedDialogs dialogs_;
    mainmodule::MainModuleWindow window_{dialogs_};
};

/// SQLite alone: the same number of plantings in a table of its own.
class RawPlantings
{
public:
    explicit RawPlantings(const Office &office)
    {
        const QString path = office.path(QStringLiteral("Databases/ZN4.mdb"));
        raw_ = std::make_unique<RawSqlite>(path);
        read_ = raw_->prepare("SELECT p.*, b.Block, v.Variety FROM tblBlockPlant p JOIN tblBlock b ON b.BlockID = p.BlockID "
                              "JOIN tblCrVariety v ON v.CrVaID = p.CrVaID");
    }
    void read() { raw_->step(read_); }

private:
    std::unique_ptr<RawSqlite> raw_;
    sqlite3_stmt *read_ = nullptr;
};

/// SQLite alone, writing rows in one transaction to a file of its own.
class RawRows
{
public:
    explicit RawRows(const Office &office)
    {
        const QString path = office.path(QStringLiteral("raw.db"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) {
            qFatal("the file of the baseline cannot be made");
        }
        file.close();
        raw_ = std::make_unique<RawSqlite>(path);
        raw_->run("CREATE TABLE rows (id INTEGER PRIMARY KEY, block INTEGER, variety INTEGER, active INTEGER, name TEXT)");
        insert_ = raw_->prepare("INSERT INTO rows VALUES (?, ?, 1, 1, 'Planting of a block')");
    }
    double write(std::int64_t rows)
    {
        const double taken = seconds([&] {
            raw_->run("BEGIN IMMEDIATE");
            for (std::int64_t i = 1; i <= rows; ++i) {
                raw_->step(insert_, {i, i % Blocks + 1});
            }
            raw_->run("COMMIT");
        });
        raw_->run("DELETE FROM rows");
        return taken;
    }

private:
    std::unique_ptr<RawSqlite> raw_;
    sqlite3_stmt *insert_ = nullptr;
};

void showPlantings(benchmark::State &state)
{
    Office office(state.range(0));
    RawPlantings raw(office);
    compareTimed(
        state, [&] { office.show(QStringLiteral("planted-blocks")); },
        [&] {
            const double taken = seconds([&] { raw.read(); });
            office.show(QStringLiteral("start"));
            return taken;
        });
}

void showOtherLists(benchmark::State &state)
{
    Office office(state.range(0));
    RawPlantings raw(office);
    compareTimed(
        state,
        [&] {
            for (const char *page : {"blocks", "workers", "pests"}) {
                office.show(QLatin1String(page));
            }
        },
        [&] {
            const double taken = seconds([&] { raw.read(); });
            office.show(QStringLiteral("start"));
            return taken;
        });
}

void returnToTheWindow(benchmark::State &state)
{
    Office office(state.range(0));
    RawPlantings raw(office);
    office.show(QStringLiteral("planted-blocks"));
    compare(
        state,
        [] {
            Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
            Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
            QCoreApplication::processEvents();
        },
        [&] { raw.read(); });
}

void typeACell(benchmark::State &state)
{
    Office office(state.range(0));
    RawRows raw(office);
    int typed = 0;
    const lists::Table &table = lists::tableOf(lists::List::Plantings);
    const auto change = [&] {
        lists::GivenRow row;
        row.keyText = QStringLiteral("1");
        row.cells.resize(table.columns.size());
        row.cells[static_cast<std::size_t>(table.nameColumn)] =
            sheets::Cell{sheets::CellKind::Text, false, QStringLiteral("Name %1").arg(++typed)};
        lists::Planner planner(office.window().farmLists(), lists::Matching::ByKey, 1);
        planner.add({lists::List::Plantings, table.sheet, {row}});
        office.window().write(planner.plan().changes, QStringLiteral("saved"));
    };
    compareTimed(state, change, [&] { return raw.write(1); });
}

void pastePlantings(benchmark::State &state)
{
    Office office(0);
    RawRows raw(office);
    QString text = QStringLiteral("Block\tPlanted block\tVariety\n");
    for (std::int64_t i = 1; i <= state.range(0); ++i) {
        text += QStringLiteral("Block %1\tPlanting %2\tValencia\n").arg(i % Blocks + 1).arg(i);
    }
    QGuiApplication::clipboard()->setText(text);
    office.show(QStringLiteral("planted-blocks"));
    compareTimed(
        state, [&] { office.click("cmdPaste"); },
        [&] {
            if (office.plantings() != static_cast<std::size_t>(state.range(0))) {
                state.SkipWithError("the paste did not store its rows");
            }
            office.click("cmdUndo");
            return raw.write(state.range(0));
        });
}

void importPlantings(benchmark::State &state)
{
    Office office(state.range(0));
    RawRows raw(office);
    const QString path = office.path(QStringLiteral("lists.xlsx"));
    lists::writeBook(office.window().farmLists(), path);
    office.show(QStringLiteral("planted-blocks"));
    const auto import = [&] {
        sheets::Workbook book = sheets::readWorkbook(path);
        // Without keys all plantings are new.
        for (sheets::Sheet &sheet : book.sheets) {
            if (sheet.name == lists::tableOf(lists::List::Plantings).sheet) {
                std::for_each(sheet.rows.begin() + 1, sheet.rows.end(), [](auto &row) { row.front() = sheets::Cell(); });
            }
        }
        const mainmodule::ImportDialog dialog(office.window(), lists::givenBook(book), lists::Matching::ByKey);
        office.window().write(dialog.plan().changes, QStringLiteral("saved"));
    };
    compareTimed(state, import, [&] {
        if (office.plantings() != 2 * static_cast<std::size_t>(state.range(0))) {
            state.SkipWithError("the import did not store its rows");
        }
        office.click("cmdUndo");
        return raw.write(state.range(0));
    });
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    FarmApplication application(argc, argv);
    registerRows({
        {"lists: plantings shown", "plantings", showPlantings, {1250, 5000}, 15},
        {"lists: blocks, workers and pests shown", "plantings", showOtherLists, {5000}, 15},
        {"lists: window entered, all read again", "plantings", returnToTheWindow, {1250, 5000}, 15},
        {"lists: one cell stored", "plantings", typeACell, {1250, 5000}, 15},
        {"lists: rows pasted", "rows", pastePlantings, {1250, 5000}, 5},
        {"lists: workbook checked and written", "rows", importPlantings, {1250, 5000}, 5},
    });
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
