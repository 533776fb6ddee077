// SPDX-License-Identifier: GPL-3.0-or-later
#include "BooksBench.h"

#include "BigProgram.h"
#include "Measure.h"
#include "RawSheets.h"
#include "RawSqlite.h"
#include "platform/basic/Formats.h"
#include "reports/FieldSheets.h"
#include "reports/RecordsReport.h"
#include "reports/modReporting.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace
{

/// Takes every workbook and opens none.
class QuietLauncher : public excel::Launcher
{
public:
    bool open(const QString &) override { return true; }
    void reportPath(const QString &) override {}
};

/// As printBlockSheets, the queries left out.
void writeBlockSheets(const QString &path, const reports::FieldSheetData &data, const std::vector<reports::SheetBlock> &blocks)
{
    excel::Application application;
    excel::Workbook workbook = application.Workbooks().Add();
    reports::REPORT_HideExcel(application, true);
    excel::Worksheet sheet = workbook.Worksheets(1);
    for (const reports::SheetBlock &block : blocks) {
        QString tested = block.name;
        sheet.setName(reports::REPORT_SafeSheetName(workbook, tested));
        reports::Print_Block_Sheet(sheet, data, block, reports::SheetKind::Count);
        reports::setUpBlockSheet(application, sheet);
        reports::REPORT_AddSheet(workbook);
        sheet = workbook.Worksheets(workbook.Sheets().Count());
    }
    workbook.SaveAs(path, excel::xlOpenXMLWorkbook);
}

void blockSheets(benchmark::State &state)
{
    const auto Blocks = static_cast<int>(state.range(0));
    constexpr int Points = 20;
    constexpr int Pests = 15;
    const QTemporaryDir folder(QDir::current().filePath(QStringLiteral("books-XXXXXX")));
    reports::FieldSheetData data{
        .farm = QStringLiteral("Farm"), .completion = QDate(2026, 11, 23), .person = QStringLiteral("Anna")};
    for (int pest = 1; pest <= Pests; ++pest) {
        data.pests.push_back(QStringLiteral("Pest %1").arg(pest));
    }
    std::vector<reports::SheetBlock> blocks;
    for (int block = 1; block <= Blocks; ++block) {
        reports::SheetBlock made{.name = QStringLiteral("Block %1").arg(block), .varieties = {QStringLiteral("Variety")}};
        for (int point = 1; point <= Points; ++point) {
            made.points.push_back(point);
        }
        blocks.push_back(made);
    }
    compare(
        state, [&] { writeBlockSheets(folder.filePath(QStringLiteral("ours.xlsx")), data, blocks); },
        [&] { writeRawBlockSheets(folder.filePath(QStringLiteral("raw.xlsx")), Blocks, Points, Pests); });
}

/// Rows of a block's table with its heading.
constexpr int RowsOfTable = 600;
constexpr int LinesOfTable = 597;
constexpr int PointsOfLine = 9;

std::vector<reports::PestRecord> recordsOfTable()
{
    std::vector<reports::PestRecord> records;
    for (int line = 0; line < LinesOfTable; ++line) {
        for (int point = 1; point <= PointsOfLine; ++point) {
            records.push_back({.completed = basic::SerialDate(43000.0 + line),
                               .point = point,
                               .counts = true,
                               .count = static_cast<double>((line + point) % 9)});
        }
    }
    return records;
}

/// Seconds and peak of the other writer, as it tells them: the start of its interpreter does not count.
std::pair<double, double> runOtherWriter(const QString &path, int tables)
{
    QProcess process;
    process.start(QStringLiteral(BENCH_PYTHON),
                  {QStringLiteral(OTHER_WRITER), path, QString::number(tables), QString::number(LinesOfTable),
                   QString::number(PointsOfLine)});
    if (!process.waitForFinished(120000) || process.exitCode() != 0) {
        qFatal("the other writer failed; it needs python3-xlwt: %s", process.readAllStandardError().constData());
    }
    const QList<QByteArray> output = process.readAllStandardOutput().simplified().split(' ');
    return {output.first().toDouble(), output.last().toDouble()};
}

/// Cells, looks, column fit and save of rows x 12 columns; the bar is a ratio of 0.1 and 300 MB.
void recordsSheet(benchmark::State &state)
{
    const auto tables = static_cast<int>(state.range(0)) / RowsOfTable;
    const QTemporaryDir folder(QDir::current().filePath(QStringLiteral("books-XXXXXX")));
    const QString path = folder.filePath(QStringLiteral("ours.xls"));
    reports::RecordsOrder order{.farm = QStringLiteral("Farm"), .from = QDate(2017, 1, 1), .to = QDate(2019, 12, 31)};
    order.pests.push_back({.key = 1, .name = QStringLiteral("Pest"), .chosen = true});
    for (int block = 1; block <= tables; ++block) {
        order.blocks.push_back({.key = block, .name = QStringLiteral("Block %1").arg(block), .chosen = true});
    }
    const std::vector<reports::PestRecord> records = recordsOfTable();
    const reports::RecordsSource source{.pointsOfPest = [](std::int32_t) { return PointsOfLine; },
                                        .records = [&records](std::int32_t, std::int32_t) { return records; }};
    double otherPeak = 0;
    forgetPeak();
    compareTimed(
        state,
        [&] {
            excel::Application application;
            excel::Workbook workbook = application.Workbooks().Add();
            application.setDisplayAlerts(false);
            reports::RecordsSheet sheet(application);
            reports::writeRecords(sheet, order, source, [](double) {});
            workbook.SaveAs(path, excel::xlExcel8);
            state.counters["rows"] = sheet.row();
        },
        [&] {
            const auto [time, peak] = runOtherWriter(folder.filePath(QStringLiteral("other.xls")), tables);
            otherPeak = peak;
            return time;
        });
    state.counters["peak_MB"] = peakMegabytes();
    state.counters["baseline_peak_MB"] = otherPeak;
}

/// The report as its screen runs it, with template, queries, progress and save; the baseline is its queries alone in the engine.
void wholeReport(benchmark::State &state)
{
    const auto Blocks = static_cast<int>(state.range(0));
    constexpr int Pests = 1;
    static QuietLauncher launcher;
    program().window->setLauncher(launcher);
    const QString appPath = program().farm.folder();
    QDir(appPath).mkpath(QStringLiteral("Templates"));
    QFile::copy(QStringLiteral(TEMPLATES_FOLDER "/Analysis.xls"), appPath + QStringLiteral("/Templates/Analysis.xls"));
    reports::RecordsOrder order{.farm = QStringLiteral("Farm"), .from = QDate(2000, 1, 1), .to = QDate(2060, 1, 1)};
    for (int pest = 1; pest <= Pests; ++pest) {
        order.pests.push_back({.key = pest, .name = QStringLiteral("Pest %1").arg(pest), .chosen = true});
    }
    for (int block = 1; block <= Blocks; ++block) {
        order.blocks.push_back({.key = block, .name = QStringLiteral("Block %1").arg(block), .chosen = true});
    }
    RawSqlite raw(program().farm.pestFile());
    sqlite3_stmt *points = raw.prepare("SELECT MAX(PMBPunt) FROM tblPMData WHERE CTargetID = ?");
    sqlite3_stmt *records =
        raw.prepare("SELECT t.*, d.* FROM tblPMTrans t INNER JOIN tblPMData d ON t.PMTransID = d.PMTransID WHERE "
                    "t.PMTransDateCom >= 36526 AND t.PMTransDateCom <= 58441 AND t.PMTransCom = -1 AND d.BlockID = ? AND "
                    "d.CTargetID = ? ORDER BY t.PMTransDateCom, t.PMTransID, d.PMBPunt, d.PMDataID");
    QDir reports(appPath + QStringLiteral("/Reports/Pest Monitor Reports"));
    forgetPeak();
    compare(
        state, [&] { reports::printRecords(*program().window, order); },
        [&] {
            for (int pest = 1; pest <= Pests; ++pest) {
                raw.step(points, {pest});
                for (int block = 1; block <= Blocks; ++block) {
                    raw.step(records, {block, pest});
                }
            }
        });
    state.counters["peak_MB"] = peakMegabytes();
    state.counters["books"] = static_cast<double>(reports.entryList(QDir::Files).size());
}

} // namespace

void registerBooks()
{
    registerRows({{"Field sheets, 20 points x 15 pests", "blocks", blockSheets, {50, 100, 200}, 9, 1.5},
                  {"Records sheet, 12 columns", "rows", recordsSheet, {15000, 30000, 60000}, 3, 0.1},
                  {"Records report of a pest, whole", "blocks", wholeReport, {2, 5, 10}, 1}});
}
