// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/Worksheet.h"

#include "platform/basic/ColumnLetters.h"
#include "platform/excel/CellReference.h"
#include "platform/excel/ColumnFit.h"
#include "platform/excel/ExcelError.h"
#include "platform/excel/Model.h"

#include <algorithm>
#include <cmath>

namespace excel
{

using model::Book;
using model::Sheet;

namespace
{
Sheet &present(Sheet *sheet)
{
    if (!sheet) {
        throw basic::RunTimeError(basic::ErrorNumber::ObjectNotSet, QStringLiteral("This sheet is not set."));
    }
    if (sheet->deleted) {
        throw ExcelError(QStringLiteral("The sheet \"%1\" was deleted.").arg(sheet->name));
    }
    return *sheet;
}

void checkInside(const Sheet &sheet, const Area &area, const QString &reference)
{
    if (!sheet.hasCells) {
        throw ExcelError(QStringLiteral("The sheet \"%1\" has no cells.").arg(sheet.name));
    }
    if (area.bottom >= sheet.book->rowLimit || area.right >= sheet.book->columnLimit) {
        throw ExcelError(QStringLiteral("\"%1\" lies outside the sheet \"%2\", which has %3 rows and %4 columns.")
                             .arg(reference, sheet.name)
                             .arg(sheet.book->rowLimit)
                             .arg(sheet.book->columnLimit));
    }
}

double points(double inches)
{
    return inches * 72;
}

/// A margin in inches; 49 is the maximum of the file formats.
double inches(double points)
{
    const double result = points / 72;
    if (!(result >= 0 && result < 49)) {
        throw ExcelError(QStringLiteral("A margin cannot be %1 points.").arg(points));
    }
    return result;
}

void setPart(std::array<QString, 3> &parts, std::size_t part, const QString &text, const QString &what)
{
    qsizetype length = text.size();
    for (std::size_t other = 0; other < parts.size(); ++other) {
        length += other == part ? 0 : parts[other].size();
    }
    // Each part that is set takes two characters for its code.
    constexpr qsizetype most = 255 - 3 * 2;
    if (length > most) {
        throw ExcelError(QStringLiteral("The %1 is too long: %2 characters; the limit is %3.").arg(what).arg(length).arg(most));
    }
    parts[part] = text;
}
} // namespace

Columns::Columns(std::shared_ptr<Book> book, Sheet *sheet, int first, int last)
    : book_(std::move(book)), sheet_(sheet), first_(first), last_(last)
{
}

void Columns::AutoFit()
{
    Sheet &sheet = present(sheet_);
    fitColumns(sheet, first_, last_);
}

void Columns::setColumnWidth(double characters)
{
    Sheet &sheet = present(sheet_);
    if (!(characters >= 0 && characters <= 255)) {
        throw ExcelError(QStringLiteral("A column cannot be %1 characters wide.").arg(characters));
    }
    const int width = fileWidth(*book_, characters);
    for (int column = first_; column <= last_; ++column) {
        sheet.columns[column].setWidth(width);
    }
}

double Columns::ColumnWidth() const
{
    const Sheet &sheet = present(sheet_);
    const auto found = sheet.columns.find(first_);
    const bool isSet = found != sheet.columns.end() && found->second.width != model::Unset;
    return isSet ? characterWidth(*book_, found->second.width) : sheet.standardWidth;
}

QString Columns::Address() const
{
    return QStringLiteral("$%1:$%2").arg(basic::columnLetters(first_), basic::columnLetters(last_));
}

PageSetup::PageSetup(std::shared_ptr<Book> book, Sheet *sheet) : book_(std::move(book)), sheet_(sheet) {}

Sheet &PageSetup::sheet() const
{
    return present(sheet_);
}

void PageSetup::setPrintTitleRows(const QString &rows)
{
    if (rows.isEmpty()) {
        sheet().page.titleRows.reset();
        return;
    }
    const Area area = parseRows(rows);
    checkInside(sheet(), area, rows);
    sheet().page.titleRows = model::Span{area.top, area.bottom};
}

QString PageSetup::PrintTitleRows() const
{
    const auto &titles = sheet().page.titleRows;
    return titles ? QStringLiteral("$%1:$%2").arg(titles->first + 1).arg(titles->last + 1) : QString();
}

void PageSetup::setPrintTitleColumns(const QString &columns)
{
    if (columns.isEmpty()) {
        sheet().page.titleColumns.reset();
        return;
    }
    const Area area = parseColumns(columns);
    checkInside(sheet(), area, columns);
    sheet().page.titleColumns = model::Span{area.left, area.right};
}

QString PageSetup::PrintTitleColumns() const
{
    const auto &titles = sheet().page.titleColumns;
    return titles ? QStringLiteral("$%1:$%2").arg(basic::columnLetters(titles->first), basic::columnLetters(titles->last))
                  : QString();
}

void PageSetup::setLeftHeader(const QString &text)
{
    setPart(sheet().page.header, 0, text, QStringLiteral("header"));
}

QString PageSetup::LeftHeader() const
{
    return sheet().page.header[0];
}

void PageSetup::setCenterHeader(const QString &text)
{
    setPart(sheet().page.header, 1, text, QStringLiteral("header"));
}

QString PageSetup::CenterHeader() const
{
    return sheet().page.header[1];
}

void PageSetup::setRightHeader(const QString &text)
{
    setPart(sheet().page.header, 2, text, QStringLiteral("header"));
}

QString PageSetup::RightHeader() const
{
    return sheet().page.header[2];
}

void PageSetup::setLeftFooter(const QString &text)
{
    setPart(sheet().page.footer, 0, text, QStringLiteral("footer"));
}

QString PageSetup::LeftFooter() const
{
    return sheet().page.footer[0];
}

void PageSetup::setCenterFooter(const QString &text)
{
    setPart(sheet().page.footer, 1, text, QStringLiteral("footer"));
}

QString PageSetup::CenterFooter() const
{
    return sheet().page.footer[1];
}

void PageSetup::setRightFooter(const QString &text)
{
    setPart(sheet().page.footer, 2, text, QStringLiteral("footer"));
}

QString PageSetup::RightFooter() const
{
    return sheet().page.footer[2];
}

void PageSetup::setOrientation(int orientation)
{
    if (orientation != xlPortrait && orientation != xlLandscape) {
        throw ExcelError(QStringLiteral("PageSetup.Orientation cannot be set to %1.").arg(orientation));
    }
    sheet().page.orientation = orientation;
}

int PageSetup::Orientation() const
{
    return sheet().page.orientation;
}

void PageSetup::setPaperSize(int paper)
{
    if (paper < 1 || paper > 118) {
        throw ExcelError(QStringLiteral("PageSetup.PaperSize cannot be set to %1.").arg(paper));
    }
    sheet().page.paper = paper;
}

int PageSetup::PaperSize() const
{
    return sheet().page.paper;
}

void PageSetup::setLeftMargin(double points)
{
    sheet().page.margins[0] = inches(points);
}

double PageSetup::LeftMargin() const
{
    return points(sheet().page.margins[0]);
}

void PageSetup::setRightMargin(double points)
{
    sheet().page.margins[1] = inches(points);
}

double PageSetup::RightMargin() const
{
    return points(sheet().page.margins[1]);
}

void PageSetup::setTopMargin(double points)
{
    sheet().page.margins[2] = inches(points);
}

double PageSetup::TopMargin() const
{
    return points(sheet().page.margins[2]);
}

void PageSetup::setBottomMargin(double points)
{
    sheet().page.margins[3] = inches(points);
}

double PageSetup::BottomMargin() const
{
    return points(sheet().page.margins[3]);
}

void PageSetup::setFitToPagesWide(int pages)
{
    if (pages < 0 || pages > 32767) {
        throw ExcelError(QStringLiteral("PageSetup.FitToPagesWide cannot be set to %1.").arg(pages));
    }
    sheet().page.pagesWide = pages;
}

int PageSetup::FitToPagesWide() const
{
    return sheet().page.pagesWide;
}

Worksheet::Worksheet(std::shared_ptr<Book> book, Sheet *sheet) : book_(std::move(book)), sheet_(sheet) {}

Sheet &Worksheet::sheet() const
{
    return present(sheet_);
}

QString Worksheet::Name() const
{
    return sheet().name;
}

void Worksheet::setName(const QString &name)
{
    book_->checkName(sheet(), name);
    sheet_->name = name;
}

void Worksheet::Activate()
{
    book_->activeSheet = book_->positionOf(sheet());
}

void Worksheet::Delete()
{
    model::deleteSheet(*book_, sheet());
}

Range Worksheet::Range(const QString &first, const QString &last) const
{
    const Area start = parseCell(first);
    const Area end = parseCell(last);
    const Area area{std::min(start.top, end.top), std::min(start.left, end.left), std::max(start.top, end.top),
                    std::max(start.left, end.left)};
    checkInside(sheet(), area, first + u':' + last);
    return {book_, sheet_, area};
}

Range Worksheet::Range(const QString &cell) const
{
    const Area area = parseArea(cell);
    checkInside(sheet(), area, cell);
    return {book_, sheet_, area};
}

Range Worksheet::Cells(int row, int column) const
{
    const Area area{row - 1, column - 1, row - 1, column - 1};
    if (row < 1 || column < 1) {
        throw ExcelError(QStringLiteral("There is no cell in row %1 and column %2.").arg(row).arg(column));
    }
    const Sheet &target = sheet();
    if (!target.hasCells || row > target.book->rowLimit || column > target.book->columnLimit) {
        checkInside(target, area, basic::columnLetters(area.left) + QString::number(row));
    }
    return {book_, sheet_, area};
}

Columns Worksheet::Columns(const QString &columns) const
{
    const Area area = parseColumns(columns);
    checkInside(sheet(), area, columns);
    return {book_, sheet_, area.left, area.right};
}

PageSetup Worksheet::PageSetup() const
{
    sheet();
    return {book_, sheet_};
}

void Worksheet::addPageBreak(int row)
{
    std::vector<int> &breaks = sheet().page.breaks;
    if (row > 1 && (breaks.empty() || breaks.back() < row - 1)) {
        breaks.push_back(row - 1);
    }
}

} // namespace excel
