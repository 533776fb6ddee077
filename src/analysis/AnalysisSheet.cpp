// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/AnalysisSheet.h"

#include "common/modGeneral.h"
#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "reports/TemplateReport.h"
#include "screens/LongWork.h"
#include "screens/ScreenHost.h"

#include <QDir>

namespace
{

constexpr double TextSize = 8;
constexpr double FarmSize = 11;
constexpr int HeadingRow = 6;
constexpr int FirstRow = 7;
constexpr std::u16string_view DateFormat = u"dd/mm/yyyy";

/// Text that is not a date is unchanged.
QString asDate(const QString &text)
{
    const QDate date = basic::dateFromText(text);
    return date.isValid() ? basic::formatDate(date, DateFormat) : text;
}

AnalysisSheet::Line lineOf(const controls::FlexGrid &grid, int row)
{
    AnalysisSheet::Line line{grid.TextMatrix(row, BlockCol), asDate(grid.TextMatrix(row, CultivarCol)),
                             grid.TextMatrix(row, PartOrDepthCol)};
    for (int col = SeasonCol; col <= LastValueCol; ++col) {
        line[static_cast<std::size_t>(col - SeasonCol) + 3] = grid.TextMatrix(row, col);
    }
    return line;
}

/// Formats the whole line at once, since a sheet may have tens of thousands.
void writeLine(const excel::Application &application, int row, const AnalysisSheet::Line &line, bool bold)
{
    const QString number = QString::number(row);
    excel::Range all = application.Range(u'A' + number, u'O' + number);
    all.Font().setSize(TextSize);
    all.Font().setBold(bold);
    application.Range(u'A' + number, u'D' + number).setHorizontalAlignment(excel::xlLeft);
    for (std::size_t column = 0; column < line.size(); ++column) {
        const QString cell = Column_Name(static_cast<int>(column), false) + number;
        application.Range(cell, cell).setValue(line[column]);
    }
}

void writeTop(const excel::Application &application, const AnalysisSheet &sheet)
{
    excel::Range title = application.Range(QStringLiteral("A1"), QStringLiteral("O1"));
    title.setMergeCells(true);
    title.setValue(sheet.title);
    title.Font().setBold(true);
    excel::Range farm = application.Range(QStringLiteral("A3"), QStringLiteral("O3"));
    farm.setMergeCells(true);
    farm.setValue(sheet.farm);
    farm.Font().setSize(FarmSize);
    farm.Font().setBold(true);
    farm.setHorizontalAlignment(excel::xlLeft);
    const QString period =
        basic::formatDate(sheet.from, DateFormat) + QStringLiteral(" to ") + basic::formatDate(sheet.to, DateFormat);
    for (const auto &[cell, text] :
         {std::pair(QStringLiteral("A4"), QStringLiteral("Period:")), std::pair(QStringLiteral("B4"), period)}) {
        excel::Range range = application.Range(cell, cell);
        range.setValue(text);
        range.Font().setSize(TextSize);
        range.setHorizontalAlignment(excel::xlLeft);
    }
}

} // namespace

AnalysisSheet analysisSheet(const controls::FlexGrid &grid, const AnalysisKind &kind)
{
    AnalysisSheet sheet;
    sheet.title = kind.sheetTitle.toString();
    sheet.headings = lineOf(grid, 0);
    sheet.headings[0] = QStringLiteral("Block");
    sheet.headings[1] = QStringLiteral("Date");
    sheet.headings[2] = kind.sheetHeading.toString();
    for (int row = 1; row < grid.Rows(); ++row) {
        if (grid.RowHeight(row) != 0) {
            sheet.lines.push_back(lineOf(grid, row));
        }
    }
    return sheet;
}

void writeAnalysisSheet(const excel::Application &application, const AnalysisSheet &sheet,
                        const std::function<void(double percent)> &progress)
{
    constexpr double whole = 100.0;
    constexpr std::size_t steps = 50;
    writeTop(application, sheet);
    writeLine(application, HeadingRow, sheet.headings, true);
    const std::size_t step = sheet.lines.size() / steps + 1;
    for (std::size_t i = 0; i < sheet.lines.size(); ++i) {
        writeLine(application, FirstRow + static_cast<int>(i), sheet.lines[i], false);
        if (i % step == 0) {
            progress(whole * static_cast<double>(i) / static_cast<double>(sheet.lines.size()));
        }
    }
    application.Columns(QStringLiteral("A:O")).AutoFit();
    application.ActiveSheet().PageSetup().setPrintTitleRows(QStringLiteral("$6:$6"));
}

void printAnalyses(ScreenHost &host, const AnalysisSheet &sheet)
{
    reports::TemplateReport report(host, QStringLiteral("Analysis.xls"));
    report.application().setVisible(true);
    const LongWorkWithProgress work(host);
    writeAnalysisSheet(report.application(), sheet,
                       [&host, &sheet](double percent) { Show_Progress(host, basic::toInteger16(percent), sheet.title); });
    const QString path = report.save(QStringLiteral("Analysis "));
    host.showStatus(QStringLiteral("Sheet saved as %1").arg(QDir::toNativeSeparators(path)));
}
