// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/FilledSheet.h"

#include "common/modGeneral.h"
#include "platform/basic/Formats.h"
#include "reports/TemplateReport.h"
#include "screens/ScreenHost.h"

#include <QDir>

#include <algorithm>

namespace reports
{

namespace
{

constexpr double TextSize = 8;
constexpr int FirstRow = 5;
/// "A" to "AE".
constexpr qsizetype Letters = 31;

QStringList PRow_Set()
{
    QStringList letters;
    for (int column = 0; column < Letters; ++column) {
        letters.append(Column_Name(column, false));
    }
    return letters;
}

} // namespace

void writeFilledSheet(const excel::Application &application, const FilledSheet &sheet)
{
    const QStringList letters = PRow_Set();
    int row = FirstRow;
    for (const QStringList &cells : sheet.rows) {
        const qsizetype shown = std::min(cells.size(), letters.size());
        for (qsizetype column = 0; column < shown; ++column) {
            const QString name = letters[column] + QString::number(row);
            excel::Range range = application.Range(name, name);
            range.Font().setSize(TextSize);
            range.setValue(cells[column].isEmpty() ? QStringLiteral(" ") : cells[column]);
            range.Borders().setLineStyle(excel::xlContinuous);
            if (column > 0) {
                range.setHorizontalAlignment(excel::xlCenter);
            }
        }
        ++row;
    }
    // Before the headings, which run over the columns to their right.
    application.ActiveSheet().Columns(QStringLiteral("A:AE")).AutoFit();
    const std::pair<const char *, QString> headings[] = {
        {"A2", QStringLiteral("Block :  ") + sheet.block},
        {"D2", QStringLiteral("Date :  ") + basic::shortDate(sheet.completed)},
        {"G2", QStringLiteral("Week No. :  ") + sheet.week},
        {"J2", QStringLiteral("Person :  ") + sheet.person},
        // The note is under this caption, whatever it contains.
        {"A3", QStringLiteral("Block :  ") + sheet.note},
    };
    for (const auto &[cell, text] : headings) {
        excel::Range range = application.Range(QLatin1String(cell), QLatin1String(cell));
        range.setMergeCells(true);
        range.setValue(text);
        range.Font().setSize(TextSize);
        range.Font().setBold(true);
    }
}

void Print_Filled_Sheet(ScreenHost &host, const FilledSheet &sheet)
{
    TemplateReport report(host, QStringLiteral("PestMoni.xls"));
    report.application().setVisible(false);
    writeFilledSheet(report.application(), sheet);
    const QString path = report.save(QStringLiteral("Report_"));
    host.showStatus(QStringLiteral("Sheet saved as %1").arg(QDir::toNativeSeparators(path)));
}

} // namespace reports
