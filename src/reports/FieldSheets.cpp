// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/FieldSheets.h"

#include "common/modGeneral.h"
#include "platform/basic/Formats.h"
#include "reports/SheetGrid.h"

namespace reports
{

namespace
{

constexpr double TitleSize = 15;
constexpr double FarmSize = 11;
constexpr double HeadingSize = 10;
constexpr double VarietySize = 12;
constexpr double LineHeight = 18;
constexpr double VarietyHeight = 75;
constexpr double ColumnWidth = 5;
constexpr double LeftMarginCentimetres = 1.25;

enum class Kind { Plain, Bold, Box };

/// A merged range of the heading, from one column to another.
struct HeadingCell {
    int row;
    const char *first;
    const char *last;
    QString text;
    Kind kind;
    double size = HeadingSize;
};

void writeHeading(const excel::Worksheet &sheet, const std::vector<HeadingCell> &cells)
{
    for (const HeadingCell &cell : cells) {
        const QString c1 = cellName(QLatin1String(cell.first), cell.row);
        const QString c2 = cellName(QLatin1String(cell.last), cell.row);
        RangeFormat format{
            .value = cell.text, .size = cell.size, .merge = true, .bold = cell.kind != Kind::Plain, .rowHeight = LineHeight};
        if (cell.kind == Kind::Box) {
            format.hAlign = excel::xlLeft;
            format.borderStyle = excel::xlContinuous;
            format.borderWeight = excel::xlHairline;
            REPORT_FormatRange(sheet, c1, c2, format);
        } else {
            Write_Cell(sheet, c1, c2, format);
        }
    }
}

void writeTitle(const excel::Worksheet &sheet, const QString &title)
{
    const QString first = QStringLiteral("a1");
    const QString last = QStringLiteral("p1");
    REPORT_FormatRange(
        sheet, first, last,
        {.value = title, .size = TitleSize, .merge = true, .bold = true, .hAlign = excel::xlCenter, .rowHeight = LineHeight});
    REPORT_ShadeRange(sheet, first, last);
}

void setUpSheet(const excel::Application &application, const excel::Worksheet &sheet, std::initializer_list<const char *> columns)
{
    for (const char *column : columns) {
        sheet.Columns(QLatin1String(column)).setColumnWidth(ColumnWidth);
    }
    REPORT_PageSetup(sheet, QStringLiteral("$1:$7"), QStringLiteral("A:A"), QStringLiteral("Date &D Time &T"),
                     QStringLiteral("Page #&P Of &N Pages"), excel::xlPortrait, QString());
    excel::PageSetup page = sheet.PageSetup();
    page.setLeftMargin(application.CentimetersToPoints(LeftMarginCentimetres));
    // Many pests shrink the print: a column on a page of its own would get lost.
    page.setFitToPagesWide(1);
}

} // namespace

int Print_Block_Heading(const excel::Worksheet &sheet, const FieldSheetData &data, const SheetBlock &block, int row)
{
    const QString varieties = Strip_Comma(block.varieties.join(QStringLiteral(", ")), QStringLiteral(","));
    const QString completion = basic::formatDate(data.completion, u"dd/mm/yyyy");
    writeHeading(sheet,
                 {{row, "A", "H", data.farm, Kind::Bold, FarmSize},
                  {row, "I", "I", QStringLiteral("Block:"), Kind::Bold},
                  {row, "J", "K", block.name, Kind::Bold},
                  {row + 1, "A", "C", QStringLiteral("Cultivars:"), Kind::Bold},
                  {row + 2, "A", "C", QStringLiteral("Completion Date:"), Kind::Plain},
                  {row + 2, "D", "F", completion, Kind::Bold},
                  {row + 2, "G", "I", QStringLiteral("Date Completed:"), Kind::Plain},
                  {row + 2, "J", "K", QString(), Kind::Bold},
                  {row + 2, "L", "N", QStringLiteral("Instruction To:"), Kind::Plain},
                  {row + 2, "O", "P", data.person, Kind::Bold},
                  {row + 3, "A", "P", QString(), Kind::Plain},
                  {row + 4, "A", "C", QStringLiteral("Person"), Kind::Bold},
                  {row + 4, "D", "G", QString(), Kind::Box},
                  {row + 4, "H", "J", QStringLiteral("Signed"), Kind::Bold},
                  {row + 4, "K", "P", QString(), Kind::Box},
                  {row + 5, "A", "P", QString(), Kind::Plain}});
    Write_Cell(sheet, cellName(QStringLiteral("D"), row + 1), cellName(QStringLiteral("P"), row + 1),
               {.value = varieties,
                .size = VarietySize,
                .wrap = true,
                .merge = true,
                .bold = true,
                .rowHeight = VarietyHeight,
                .vAlign = excel::xlTop});
    return row + 5;
}

void Print_Block_Sheet(const excel::Worksheet &sheet, const FieldSheetData &data, const SheetBlock &block, SheetKind sheetKind)
{
    constexpr int firstRow = 3;
    Print_Block_Heading(sheet, data, block, firstRow);
    if (data.layout == SheetLayout::Single) {
        writeBlockGrid(sheet, data, block);
    } else {
        writeGroupedGrid(sheet, data, {block});
    }
    writeTitle(sheet, sheetTitle(sheetKind));
}

void setUpBlockSheet(const excel::Application &application, const excel::Worksheet &sheet)
{
    setUpSheet(application, sheet, {"a:a", "a:d", "e:g", "h:j", "k:m", "n:p"});
}

int Print_All_Heading(const excel::Worksheet &sheet, const FieldSheetData &data, int row, const QString &title)
{
    writeTitle(sheet, title);
    writeHeading(sheet,
                 {{row, "A", "I", data.farm, Kind::Bold, FarmSize},
                  {row + 1, "A", "D", QStringLiteral("Completion Date: "), Kind::Plain},
                  {row + 1, "E", "G", basic::shortDate(data.completion), Kind::Bold},
                  {row + 1, "H", "J", QStringLiteral("Date completed:"), Kind::Plain},
                  {row + 1, "K", "L", QString(), Kind::Bold},
                  {row + 1, "M", "N", QStringLiteral("Instruction to:"), Kind::Plain},
                  {row + 1, "O", "P", data.person, Kind::Bold},
                  {row + 2, "A", "P", QString(), Kind::Plain},
                  {row + 3, "A", "D", QStringLiteral("Person"), Kind::Bold},
                  {row + 3, "E", "H", QString(), Kind::Box},
                  {row + 3, "I", "K", QStringLiteral("Signed"), Kind::Bold},
                  {row + 3, "L", "P", QString(), Kind::Box}});
    return row + 3;
}

void Print_All_Sheet(const excel::Worksheet &sheet, const FieldSheetData &data, const std::vector<SheetBlock> &blocks,
                     SheetKind sheetKind)
{
    constexpr int firstRow = 3;
    const int row = Print_All_Heading(sheet, data, firstRow, sheetTitle(sheetKind)) + 2;
    Write_Cell(sheet, cellName(QStringLiteral("A"), row), cellName(QStringLiteral("P"), row),
               {.merge = true, .rowHeight = LineHeight});
    if (data.layout == SheetLayout::Single) {
        writeAllGrid(sheet, data, blocks);
    } else {
        writeGroupedGrid(sheet, data, blocks);
    }
}

void setUpAllSheet(const excel::Application &application, const excel::Worksheet &sheet)
{
    setUpSheet(application, sheet, {"a:a", "a:d", "e:g", "h:j", "k:m", "n:p", "q:s"});
}

} // namespace reports
