// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/RecordsSheet.h"

#include "platform/basic/Formats.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace reports
{

namespace
{

constexpr int FirstRow = 4;
constexpr double TitleSize = 10;
constexpr double TextSize = 8;
/// Indexes count from column B, which is 0; Z is the last one.
constexpr int MaxIndex = 'Z' - 'B';
constexpr int DateIndex = -1;
constexpr int NameIndex = 0;
constexpr std::size_t MaxSums = 30;

/// Number of point columns; a damaged file may hold a point number in the thousand millions.
int shownPoints(int points)
{
    return std::min(points, MaxIndex);
}

std::optional<QChar> columnAt(int index)
{
    if (index < 0 || index > MaxIndex) {
        return {};
    }
    return QChar('B' + index);
}

void styleLine(excel::Range &cells)
{
    cells.Font().setSize(TextSize);
    cells.Font().setBold(false);
    cells.Borders().setLineStyle(excel::xlContinuous);
}

/// Rows that a table takes at most: its heading, a line per date, and two for the totals.
int tableRows(const std::vector<PestRecord> &records)
{
    int rows = 3;
    for (auto record = records.begin(); record != records.end(); ++record) {
        rows += record == records.begin() || std::prev(record)->completed != record->completed ? 1 : 0;
    }
    return rows;
}

} // namespace

/// Sums of a table, by index of the column, and of the current line.
struct RecordsSheet::Totals {
    std::array<double, MaxSums + 1> acc{};
    double line = 0.0;
    /// Of the column "Total"; cells beyond it are not part of the styled line.
    int index = 0;
    bool hasCounts = false;
};

RecordsSheet::RecordsSheet(const excel::Application &application, int rowLimit)
    : application_(application), sheet_(application.ActiveSheet()), rowLimit_(rowLimit), row_(FirstRow), pageStart_(FirstRow)
{
}

excel::Range RecordsSheet::range(const QString &first, const QString &last) const
{
    return sheet_.Range(first, last);
}

excel::Range RecordsSheet::lineUpTo(int index) const
{
    const QString row = QString::number(row_);
    return range(u'A' + row, *columnAt(std::clamp(index, 0, MaxIndex)) + row);
}

excel::Range RecordsSheet::cellAt(int index) const
{
    constexpr int columnOfName = 2;
    return sheet_.Cells(row_, columnOfName + index);
}

void RecordsSheet::write(const QString &first, const QString &last, const QString &text, TextStyle style) const
{
    excel::Range cells = range(first, last);
    cells.setMergeCells(true);
    cells.setValue(text);
    cells.Font().setSize(style.size);
    cells.Font().setBold(style.bold);
    if (style.framed) {
        cells.Borders().setLineStyle(excel::xlContinuous);
    }
}

void RecordsSheet::writeCell(int index, const QString &text, TextStyle style) const
{
    if (const auto column = columnAt(index)) {
        const QString cell = *column + QString::number(row_);
        write(cell, cell, text, style);
    }
}

void RecordsSheet::writeHeading(const QString &farm, QDate from, QDate to)
{
    heading_ = Heading{farm, from, to};
    writeHeading(*heading_);
}

void RecordsSheet::writeHeading(const Heading &heading) const
{
    const TextStyle small{TextSize, true, false};
    write(QStringLiteral("A1"), QStringLiteral("A1"), QStringLiteral("PEST MONITORING"), {TitleSize, true, false});
    write(QStringLiteral("A2"), QStringLiteral("C2"), QStringLiteral("Farm :  ") + heading.farm, small);
    write(QStringLiteral("D2"), QStringLiteral("F2"), QStringLiteral("Date :  ") + basic::formatDate(heading.from, u"dd/mm/yyyy"),
          small);
    write(QStringLiteral("G2"), QStringLiteral("I2"), basic::formatDate(heading.to, u"dd/mm/yyyy"), small);
}

void RecordsSheet::beginGroup(const QString &caption, int points)
{
    caption_ = caption;
    captionPoints_ = points;
    openCaption_ = row_;
    const QString row = QString::number(row_);
    const QString last = *columnAt(std::clamp(shownPoints(points) + 1, 0, MaxIndex)) + row;
    write(u'A' + row, last, caption, {TitleSize, true, true});
    range(u'A' + row, last).setHorizontalAlignment(excel::xlCenter);
    ++row_;
}

void RecordsSheet::endGroup()
{
    row_ += 2;
}

void RecordsSheet::fitColumns()
{
    sheet_.Columns(QStringLiteral("A:Z")).AutoFit();
}

int RecordsSheet::rowsPerPage() const
{
    constexpr double longEdge = 842.0;
    constexpr double shortEdge = 595.0;
    constexpr double rowHeight = 15.0;
    const excel::PageSetup page = sheet_.PageSetup();
    const double paper = page.Orientation() == excel::xlLandscape ? shortEdge : longEdge;
    // The heading is repeated on each page. A row less, since printers round.
    const int whole = static_cast<int>((paper - page.TopMargin() - page.BottomMargin()) / rowHeight) - 1;
    return std::max(whole - (FirstRow - 1), 1);
}

void RecordsSheet::makeSpace(int rows)
{
    if (row_ + rows > rowLimit_) {
        continueOnNewSheet();
    }
    const int perPage = rowsPerPage();
    const int begin = openCaption_ > 0 ? openCaption_ : row_ + 1;
    // Set too where a long table runs on, or a printer that takes a row more would move all later pages.
    constexpr int emptyRows = 2;
    while (begin - pageStart_ >= perPage) {
        const int next = pageStart_ + perPage;
        pageStart_ = begin - next <= emptyRows ? begin : next;
        sheet_.addPageBreak(pageStart_);
    }
    // A table that no page holds begins where its heading has rows below it.
    constexpr int leastRows = 6;
    const int needed = rows + 1 <= perPage ? rows : leastRows;
    if (row_ + needed - pageStart_ >= perPage && begin > pageStart_) {
        sheet_.addPageBreak(begin);
        pageStart_ = begin;
    }
    openCaption_ = 0;
}

void RecordsSheet::continueOnNewSheet()
{
    fitColumns();
    const excel::Workbook workbook = application_.ActiveWorkbook();
    sheet_ = workbook.Worksheets().Add(workbook.Worksheets(workbook.Worksheets().Count()));
    row_ = FirstRow;
    pageStart_ = FirstRow;
    if (heading_) {
        writeHeading(*heading_);
    }
    if (!caption_.isEmpty()) {
        beginGroup(caption_, captionPoints_);
    }
}

void RecordsSheet::writeTable(const QString &nameHeading, const QString &name, int pointCount,
                              const std::vector<PestRecord> &records)
{
    if (records.empty()) {
        return;
    }
    const int points = shownPoints(pointCount);
    makeSpace(tableRows(records));
    writeTableHeading(nameHeading, points);
    Totals totals;
    totals.index = points + 1;
    for (auto record = records.begin(); record != records.end();) {
        ++row_;
        const basic::SerialDate completed = record->completed;
        // The whole line at once: it may be one of tens of thousands.
        excel::Range line = lineUpTo(points + 1);
        styleLine(line);
        cellAt(DateIndex).setValue(basic::formatDate(completed, u"yyyy/mm/dd"));
        cellAt(NameIndex).setValue(name);
        for (; record != records.end() && record->completed == completed; ++record) {
            writeRecord(*record, totals);
        }
        if (totals.hasCounts) {
            if (columnAt(points + 1)) {
                cellAt(points + 1).setValue(totals.line);
                totals.acc[static_cast<std::size_t>(points + 1)] += totals.line;
            }
            totals.line = 0.0;
        }
    }
    if (totals.hasCounts) {
        writeTotals(points, totals);
    }
}

void RecordsSheet::writeTableHeading(const QString &nameHeading, int points)
{
    constexpr TextStyle style{TextSize, true, true};
    ++row_;
    const QString date = u'A' + QString::number(row_);
    write(date, date, QStringLiteral("Date"), style);
    writeCell(0, nameHeading, style);
    for (int point = 1; point <= points; ++point) {
        writeCell(point, QStringLiteral("Point %1").arg(point), style);
    }
    writeCell(points + 1, QStringLiteral("Total"), style);
}

void RecordsSheet::writeRecord(const PestRecord &record, Totals &totals) const
{
    totals.hasCounts = totals.hasCounts || record.counts;
    if (!columnAt(record.point)) {
        return;
    }
    excel::Range cell = cellAt(record.point);
    if (record.counts && record.count) {
        cell.setValue(*record.count);
        totals.line += *record.count;
        totals.acc[static_cast<std::size_t>(record.point)] += *record.count;
    } else {
        cell.setValue(record.yes && !record.counts ? QStringLiteral("Yes") : QString());
    }
    if (record.point > totals.index) {
        styleLine(cell);
    }
}

/// The line of totals, followed by an empty framed one.
void RecordsSheet::writeTotals(int points, const Totals &totals)
{
    constexpr TextStyle style{TextSize, true, true};
    ++row_;
    lineUpTo(0).Borders().setLineStyle(excel::xlContinuous);
    writeCell(0, QStringLiteral("Total"), style);
    for (int index = 1; index <= std::min(points + 1, MaxIndex); ++index) {
        writeCell(index, basic::doubleText(totals.acc[static_cast<std::size_t>(index)]), style);
    }
    ++row_;
    lineUpTo(points + 1).Borders().setLineStyle(excel::xlContinuous);
}

} // namespace reports
