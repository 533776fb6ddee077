// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/RecordsReport.h"

#include "common/MonitoringConstants.h"
#include "platform/basic/Numbers.h"
#include "reports/TemplateReport.h"
#include "screens/LongWork.h"
#include "screens/ScreenHost.h"
#include "store/clsPestMONNew.h"

#include <QDir>

#include <algorithm>

namespace reports
{

namespace
{

std::vector<PestRecord> readRecords(dao::Recordset rows)
{
    std::vector<PestRecord> records;
    if (rows.Eof()) {
        return records;
    }
    const int completed = rows.fieldIndex("PMTransDateCom");
    const int point = rows.fieldIndex("PMBPunt");
    const int method = rows.fieldIndex("PMMethodID");
    const int count = rows.fieldIndex("PMCount");
    const int yes = rows.fieldIndex("PMYes");
    records.reserve(static_cast<std::size_t>(rows.RecordCount()));
    for (; !rows.Eof(); rows.MoveNext()) {
        records.push_back({.completed = rows.date(completed).value_or(basic::SerialDate()),
                           .point = rows.longValue(point),
                           .counts = rows.longValue(method) == CountMethod,
                           .count = rows.isNull(count) ? std::nullopt : std::optional(rows.number(count)),
                           .yes = rows.boolean(yes)});
    }
    return records;
}

/// Sets the current block and pest in the session, and the method, which says whether the table counts.
RecordsSource sourceOf(clsPestMONNew &store, SessionContext &session, const RecordsOrder &order)
{
    const auto from = basic::SerialDate::fromDate(order.from);
    const auto to = basic::SerialDate::fromDate(order.to);
    return {.pointsOfPest = [&store](std::int32_t pest) -> std::optional<int> {
                const dao::Recordset rows = store.Get_PestData_Points_Pest(pest);
                if (rows.Eof() || rows.isNull(0)) {
                    return {};
                }
                return rows.longValue(0);
            },
            .records =
                [&store, &session, from, to](std::int32_t block, std::int32_t pest) {
                    session.CurrentBlockID = block;
                    session.CurrentCTargetID = pest;
                    std::vector<PestRecord> records = readRecords(store.Get_PestData_for_Block(block, pest, from, to));
                    if (!records.empty()) {
                        session.CurrentPMMethodID =
                            std::any_of(records.begin(), records.end(), [](const auto &record) { return record.counts; })
                            ? CountMethod
                            : 0;
                    }
                    return records;
                }};
}

void writePest(RecordsSheet &sheet, const ReportChoice &pest, const RecordsOrder &order, const RecordsSource &source)
{
    const int points = source.pointsOfPest(pest.key).value_or(DefaultPoints);
    sheet.beginGroup(pest.name, points);
    for (const ReportChoice &block : order.blocks) {
        if (block.chosen) {
            sheet.writeTable(QStringLiteral("Block"), block.name, points, source.records(block.key, pest.key));
        }
    }
}

void writeBlock(RecordsSheet &sheet, const ReportChoice &block, const RecordsOrder &order, const RecordsSource &source)
{
    const int points = block.points == 0 ? DefaultPoints : block.points;
    sheet.beginGroup(QStringLiteral("Block :  ") + block.name, points);
    for (const ReportChoice &pest : order.pests) {
        if (pest.chosen) {
            sheet.writeTable(QStringLiteral("Pest"), pest.name, points, source.records(block.key, pest.key));
        }
    }
}

} // namespace

void writeRecords(RecordsSheet &sheet, const RecordsOrder &order, const RecordsSource &source,
                  const std::function<void(double percent)> &progress)
{
    constexpr double whole = 100.0;
    const bool byPest = order.nesting == RecordsNesting::ByPest;
    const std::vector<ReportChoice> &outer = byPest ? order.pests : order.blocks;
    sheet.writeHeading(order.farm, order.from, order.to);
    int counter = 1;
    for (const ReportChoice &choice : outer) {
        if (choice.chosen) {
            byPest ? writePest(sheet, choice, order, source) : writeBlock(sheet, choice, order, source);
            sheet.endGroup();
        }
        progress(whole * counter++ / static_cast<double>(outer.size()));
    }
    sheet.fitColumns();
}

void printRecords(ScreenHost &host, const RecordsOrder &order)
{
    TemplateReport report(host, QStringLiteral("Analysis.xls"));
    report.application().setVisible(true);
    const LongWorkWithProgress work(host);
    RecordsSheet sheet(report.application());
    writeRecords(sheet, order, sourceOf(host.objPestMON(), host.session(), order), [&host](double percent) {
        Show_Progress(host, basic::toInteger16(percent), QStringLiteral("Pest monitor records"));
    });
    const QString path = report.save(QStringLiteral("Report_"));
    host.showStatus(QStringLiteral("Report saved as %1").arg(QDir::toNativeSeparators(path)));
}

} // namespace reports
