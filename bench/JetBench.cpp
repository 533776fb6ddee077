// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measure.h"

#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"
#include "platform/jet/Transaction.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <memory>

/// Jet files of growing size. Reading has mdb-export for its baseline, writing the same rows in an SQLite file.
namespace
{

const QString Table = QStringLiteral("tblPMData");
const QString Connect = QStringLiteral(";pwd=krelpon");
/// Points of an instruction.
constexpr int RowsPerInstruction = 15000;

dao::TableDef definition()
{
    using dao::FieldType;
    dao::TableDef table(Table);
    dao::Field key = dao::TableDef::CreateField(QStringLiteral("PMDataID"), FieldType::Long);
    key.autoIncrement = true;
    table.Append(key);
    for (const char *name : {"PMTransID", "BlockID", "CTargetID"}) {
        table.Append(dao::TableDef::CreateField(QLatin1String(name), FieldType::Long));
    }
    for (const char *name : {"PMBPunt", "PMCount", "PMCountUnder", "PMCountUpper"}) {
        table.Append(dao::TableDef::CreateField(QLatin1String(name), FieldType::Integer));
    }
    for (const char *name : {"PMYes", "PMYesUnder", "PMYesUpper"}) {
        table.Append(dao::TableDef::CreateField(QLatin1String(name), FieldType::Boolean));
    }
    table.Append(dao::Index{QStringLiteral("PrimaryKey"), {QStringLiteral("PMDataID")}, true, true});
    return table;
}

/// A file of either kind with that many rows.
class PestFile
{
public:
    PestFile(dao::FileKind kind, std::int64_t rows)
    {
        dao::Workspace::CreateDatabase(path_, Connect, kind)->Append(definition());
        if (kind == dao::FileKind::Jet) {
            fill(rows);
        }
        database_ = dao::Workspace::OpenDatabase(path_, false, false, Connect);
        if (kind == dao::FileKind::Sqlite) {
            addRows(rows);
        }
    }

    const QString &path() const { return path_; }
    dao::Database &database() { return *database_; }
    void close() { database_.reset(); }

    void addRows(std::int64_t rows)
    {
        dao::CommitScope scope(*database_);
        dao::Recordset set =
            database_->OpenRecordset(QStringLiteral("Select * from tblPMData where PMDataID = 0"), dao::RecordsetType::Dynaset);
        for (std::int64_t i = 0; i < rows; ++i) {
            set.AddNew();
            for (int field = 1; field <= 4; ++field) {
                set.set(field, static_cast<std::int32_t>(i % 100));
            }
            set.Update();
        }
        scope.commit();
    }

    void changeARow(std::int32_t key)
    {
        dao::Recordset set = database_->OpenRecordset(QStringLiteral("Select * from tblPMData where PMDataID = %1").arg(key),
                                                      dao::RecordsetType::Dynaset);
        set.Edit();
        set.set(QStringLiteral("PMCount"), ++counted_);
        set.Update();
    }

private:
    /// Without a mirror.
    void fill(std::int64_t rows)
    {
        const auto file = jet::Database::open(path_, QStringLiteral("krelpon"), jet::Access::ReadWrite);
        jet::Transaction transaction(*file);
        for (std::int64_t i = 0; i < rows; ++i) {
            const auto number = static_cast<std::int32_t>(i % 100);
            transaction.insert(Table, {jet::Null{}, number, number, number, number, 0, 0, 0, false, false, true});
        }
        transaction.commit();
    }

    QTemporaryDir folder_;
    QString path_ = folder_.filePath(QStringLiteral("PestMon.mdb"));
    std::unique_ptr<dao::Database> database_;
    std::int32_t counted_ = 0;
};

void exportTable(const QString &path)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(QStringLiteral("mdb-export"), {path, Table});
    if (!process.waitForFinished(-1) || process.exitCode() != 0) {
        qFatal("mdb-export must be installed");
    }
}

void readTable(benchmark::State &state)
{
    PestFile file(dao::FileKind::Jet, state.range(0));
    file.close();
    const auto read = [&] {
        const auto opened = jet::Database::open(file.path(), QStringLiteral("krelpon"));
        benchmark::DoNotOptimize(opened->readRows(Table, [](const jet::Row &) {}));
    };
    compare(state, read, [&] { exportTable(file.path()); });
}

void openAndQuery(benchmark::State &state)
{
    PestFile file(dao::FileKind::Jet, state.range(0));
    file.close();
    const auto query = [&] {
        const auto database = dao::Workspace::OpenDatabase(file.path(), false, true, Connect);
        benchmark::DoNotOptimize(
            database->OpenRecordset(QStringLiteral("Select * from tblPMData where PMDataID = 77")).RecordCount());
    };
    compare(state, query, [&] { exportTable(file.path()); });
    state.counters["peak_MB"] = peakMegabytes();
}

/// The same on a Jet file and on an SQLite file that hold as many rows already.
template <typename Work> void compareKinds(benchmark::State &state, Work work)
{
    PestFile jetFile(dao::FileKind::Jet, state.range(0));
    PestFile sqliteFile(dao::FileKind::Sqlite, state.range(0));
    compare(
        state, [&] { work(jetFile); }, [&] { work(sqliteFile); });
}

void saveInstruction(benchmark::State &state)
{
    compareKinds(state, [](PestFile &file) { file.addRows(RowsPerInstruction); });
}

void leaveCell(benchmark::State &state)
{
    compareKinds(state, [](PestFile &file) { file.changeARow(77); });
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const std::vector<std::int64_t> read{30'000, 300'000, 2'000'000};
    const std::vector<std::int64_t> stored{30'000, 300'000};
    constexpr double AsQuick = 1.0;
    constexpr double TwiceSqlite = 2.0;
    registerRows({{"Read a Jet table, mdb-export", "rows", readTable, read, 3, AsQuick},
                  {"Open a Jet file, first query, mdb-export", "rows", openAndQuery, read, 3},
                  {"Save an instruction of 15,000 rows, Jet", "stored", saveInstruction, stored, 5},
                  {"Leave a capture cell, Jet", "stored", leaveCell, stored, 30, TwiceSqlite}});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
