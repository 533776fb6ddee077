// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/Application.h"

#include <QDir>

#include <array>
#include <cstdio>

namespace
{
/// How a template is printed and how wide its columns are; its cells are empty, the reports write them.
struct Template {
    const char *file;
    const char *title;
    int orientation;
    /// Rows that each page repeats; empty for none.
    const char *titleRows;
    /// Characters of the first four columns.
    std::array<double, 4> widths;
};

constexpr std::array<Template, 2> Templates{{
    {"PestMoni.xls", "Pest Monitoring", excel::xlLandscape, "", {12, 12, 12, 12}},
    {"Analysis.xls", "Reports", excel::xlLandscape, "$1:$3", {16, 14, 12, 12}},
}};

constexpr double SideMargin = 1.25;
constexpr double TopMargin = 1.9;

void make(const Template &wanted, const QDir &folder)
{
    excel::Application application;
    application.setDisplayAlerts(false);
    const excel::Workbook book = application.Workbooks().Add();
    const excel::Worksheet sheet = book.Worksheets(1);
    for (std::size_t column = 0; column < wanted.widths.size(); ++column) {
        sheet.Columns(QChar(u'A' + static_cast<char16_t>(column))).setColumnWidth(wanted.widths[column]);
    }
    excel::PageSetup page = sheet.PageSetup();
    page.setPaperSize(excel::xlPaperA4);
    page.setOrientation(wanted.orientation);
    page.setLeftMargin(application.CentimetersToPoints(SideMargin));
    page.setRightMargin(application.CentimetersToPoints(SideMargin));
    page.setTopMargin(application.CentimetersToPoints(TopMargin));
    page.setBottomMargin(application.CentimetersToPoints(TopMargin));
    // As many pages down as the rows take, but no column on a page of its own.
    page.setFitToPagesWide(1);
    page.setPrintTitleRows(QLatin1String(wanted.titleRows));
    page.setLeftHeader(QLatin1String(wanted.title));
    page.setRightHeader(QStringLiteral("&D"));
    page.setCenterFooter(QStringLiteral("Page &P of &N"));
    excel::Workbook(book).SaveAs(folder.filePath(QLatin1String(wanted.file)), excel::xlExcel8);
}
} // namespace

/// make_templates FOLDER: writes the templates there, replacing those that exist.
int main(int count, char **arguments)
{
    if (count != 2) {
        std::fputs("usage: make_templates FOLDER\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(arguments[1]));
    if (!folder.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "The folder %s cannot be made.\n", arguments[1]);
        return 1;
    }
    try {
        for (const Template &wanted : Templates) {
            make(wanted, folder);
        }
    } catch (const basic::RunTimeError &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
