// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/RecordsSheet.h"

#include "platform/basic/Formats.h"

#include <algorithm>
#include <array>

namespace
{

constexpr int FirstRow = 4;
constexpr double TitleSize = 10;
constexpr double TextSize = 8;
/// Places count from column B, which is 0; Z is the last one.
constexpr int LastPlace = 'Z' - 'B';
constexpr int DatePlace = -1;
constexpr int NamePlace = 0;
constexpr std::size_t SumPlaces = 30;

/// Columns of points that have room; a damaged file may tell of a point in the thousand millions.
int shownPoints(int points)
{
    return std::min(points, LastPlace);
}

std::optional<QChar> columnAt(int place)
{
    if (place < 0 || place > LastPlace) {
        return {};
    }
    return QChar('B' + place);
}

void lookLikeALine(excel::Range &cells)
{
    cells.Font().setSize(TextSize);
    cells.Font().setBold(false);
    cells.Borders().setLineStyle(excel::xlContinuous);
}

} // namespace

/// Sums of a table: by place of the column, and of the line now written.
struct RecordsSheet::Totals {
    std::array<double, SumPlaces + 1> acc{};
    double line = 0.0;
    /// Of the column "Total"; a cell beyond it has no look of the line's.
    int place = 0;
    bool hasCounts = false;
};

RecordsSheet::RecordsSheet(const excel::Application &application) : sheet_(application.ActiveSheet()), row_(FirstRow) {}

excel::Range RecordsSheet::range(const QString &first, const QString &last) const
{
    return sheet_.Range(first, last);
}

excel::Range RecordsSheet::lineUpTo(int place) const
{
    const QString row = QString::number(row_);
    return range(u'A' + row, *columnAt(std::clamp(place, 0, LastPlace)) + row);
}

excel::Range RecordsSheet::cellAt(int place) const
{
    constexpr int columnOfName = 2;
    return sheet_.Cells(row_, columnOfName + place);
}

void RecordsSheet::write(const QString &first, const QString &last, const QString &text, CellLook look) const
{
    excel::Range cells = range(first, last);
    cells.setMergeCells(true);
    cells.setValue(text);
    cells.Font().setSize(look.size);
    cells.Font().setBold(look.bold);
    if (look.framed) {
        cells.Borders().setLineStyle(excel::xlContinuous);
    }
}

void RecordsSheet::writePlace(int place, const QString &text, CellLook look) const
{
    if (const auto column = columnAt(place)) {
        const QString cell = *column + QString::number(row_);
        write(cell, cell, text, look);
    }
}

void RecordsSheet::writeHeading(const QString &farm, QDate from, QDate to)
{
    const CellLook small{TextSize, true, false};
    write(QStringLiteral("A1"), QStringLiteral("A1"), QStringLiteral("PEST MONITORING"), {TitleSize, true, false});
    write(QStringLiteral("A2"), QStringLiteral("C2"), QStringLiteral("Farm :  ") + farm, small);
    write(QStringLiteral("D2"), QStringLiteral("F2"), QStringLiteral("Date :  ") + basic::formatDate(from, u"dd/mm/yyyy"), small);
    write(QStringLiteral("G2"), QStringLiteral("I2"), basic::formatDate(to, u"dd/mm/yyyy"), small);
}

void RecordsSheet::beginGroup(const QString &caption, int points)
{
    const QString row = QString::number(row_);
    const QString last = *columnAt(std::clamp(shownPoints(points) + 1, 0, LastPlace)) + row;
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

void RecordsSheet::writeTable(const QString &nameHeading, const QString &name, int pointsTold,
                              const std::vector<PestRecord> &records)
{
    if (records.empty()) {
        return;
    }
    const int points = shownPoints(pointsTold);
    writeTableHeading(nameHeading, points);
    Totals totals;
    totals.place = points + 1;
    for (auto record = records.begin(); record != records.end();) {
        ++row_;
        const basic::SerialDate completed = record->completed;
        // Size and weight of the whole line at once: it may be one of tens of thousands.
        excel::Range line = lineUpTo(points + 1);
        lookLikeALine(line);
        cellAt(DatePlace).setValue(basic::formatDate(completed, u"yyyy/mm/dd"));
        cellAt(NamePlace).setValue(name);
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
    constexpr CellLook look{TextSize, true, true};
    ++row_;
    const QString date = u'A' + QString::number(row_);
    write(date, date, QStringLiteral("Date"), look);
    writePlace(0, nameHeading, look);
    for (int point = 1; point <= points; ++point) {
        writePlace(point, QStringLiteral("Point %1").arg(point), look);
    }
    writePlace(points + 1, QStringLiteral("Total"), look);
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
    if (record.point > totals.place) {
        lookLikeALine(cell);
    }
}

/// The line of totals, and a framed empty one under it.
void RecordsSheet::writeTotals(int points, const Totals &totals)
{
    constexpr CellLook look{TextSize, true, true};
    ++row_;
    lineUpTo(0).Borders().setLineStyle(excel::xlContinuous);
    writePlace(0, QStringLiteral("Total"), look);
    for (int place = 1; place <= std::min(points + 1, LastPlace); ++place) {
        writePlace(place, basic::doubleText(totals.acc[static_cast<std::size_t>(place)]), look);
    }
    ++row_;
    lineUpTo(points + 1).Borders().setLineStyle(excel::xlContinuous);
}
