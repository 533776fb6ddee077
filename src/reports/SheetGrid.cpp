// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/SheetGrid.h"

#include "common/modGeneral.h"

#include <algorithm>

namespace reports
{

namespace
{

constexpr double PestHeight = 95;
constexpr double AllPestHeight = 85;
constexpr double GroupHeight = 24;
constexpr double LineHeight = 18;
/// Points of a line of 8 point text, and bold letters of it that a column of width 5 holds.
constexpr double TextLine = 11;
constexpr int LettersAcross = 6;
/// An alignment number that counts as left.
constexpr int PointAlignment = 2;

/// Cells of one pest in a layout with several: its name, and its sub-columns with captions.
struct PestGroup {
    QString first;
    QString last;
    std::vector<std::pair<QString, QString>> captions;
};

QString letter(int column)
{
    return Column_Name(column, false);
}

/// Groups of three from C. The sixth has its "In" in P.
std::vector<PestGroup> countInOutGroups()
{
    constexpr int groups = 6;
    std::vector<PestGroup> all;
    for (int group = 0; group < groups; ++group) {
        const int first = 2 + 3 * group;
        const QString in = group == groups - 1 ? QStringLiteral("P") : letter(first + 1);
        all.push_back(
            {letter(first),
             letter(first + 2),
             {{letter(first), QStringLiteral("Cnt")}, {in, QStringLiteral("In")}, {letter(first + 2), QStringLiteral("Out")}}});
    }
    return all;
}

/// Groups of two from C. The ninth has column P alone, and its "Out" in T.
std::vector<PestGroup> inOutGroups()
{
    constexpr int pairs = 8;
    std::vector<PestGroup> all;
    for (int group = 0; group < pairs; ++group) {
        const int first = 2 + 2 * group;
        all.push_back({letter(first),
                       letter(first + 1),
                       {{letter(first), QStringLiteral("In")}, {letter(first + 1), QStringLiteral("Out")}}});
    }
    all.push_back({QStringLiteral("P"), QStringLiteral("P"), {{QStringLiteral("T"), QStringLiteral("Out")}}});
    return all;
}

/// Frames the whole grid; `last` is its last column, `row` the line of totals.
void frameGrid(const excel::Worksheet &sheet, const QString &last, int row)
{
    sheet.Range(cellName(QStringLiteral("A"), SheetGridRow), cellName(last, row)).Borders().setLineStyle(excel::xlContinuous);
}

void writeTotalsLine(const excel::Worksheet &sheet, int row)
{
    const QString cell = cellName(QStringLiteral("A"), row);
    Write_Cell(sheet, cell, cell, {.value = QStringLiteral("Tot"), .bold = true, .rowHeight = LineHeight});
}

/// Column A is narrow: a long name is wrapped.
double heightFor(const QString &name)
{
    const auto lines = static_cast<double>((name.size() + LettersAcross - 1) / LettersAcross);
    return std::max(LineHeight, lines * TextLine);
}

/// A row per block and point from `row` on, then an empty line and the totals; returns the row of the totals.
int writeBlockRows(const excel::Worksheet &sheet, const std::vector<SheetBlock> &blocks, int row)
{
    for (const SheetBlock &block : blocks) {
        const double height = heightFor(block.name);
        for (const int point : block.points) {
            const QString name = cellName(QStringLiteral("A"), row);
            const QString number = cellName(QStringLiteral("B"), row);
            Write_Cell(sheet, name, name, {.value = block.name, .wrap = true, .bold = true, .rowHeight = height});
            Write_Cell(sheet, number, number, {.value = QString::number(point), .bold = true, .rowHeight = height});
            ++row;
        }
    }
    ++row;
    writeTotalsLine(sheet, row);
    return row;
}

} // namespace

QString cellName(const QString &column, int row)
{
    return column + QString::number(row);
}

QString pestColumn(int pest, int offset)
{
    return Column_Name(offset + pest - 1, false);
}

void writeBlockGrid(const excel::Worksheet &sheet, const FieldSheetData &data, const SheetBlock &block)
{
    const auto cell = [&](const QString &text, int row, int alignment) {
        const QString name = cellName(QStringLiteral("A"), row);
        Write_Cell(sheet, name, name, {.value = text, .bold = true, .hAlign = alignment, .rowHeight = LineHeight});
    };
    cell(QStringLiteral("Pnt"), SheetGridRow, excel::xlGeneral);
    QString last = QStringLiteral("A");
    int step = 0;
    for (const QString &pest : data.pests) {
        last = Column_Offset(QStringLiteral("a"), ++step);
        const QString name = cellName(last, SheetGridRow);
        REPORT_FormatRange(sheet, name, name,
                           {.value = pest,
                            .borderStyle = excel::xlContinuous,
                            .borderWeight = excel::xlThin,
                            .hAlign = excel::xlCenter,
                            .rowHeight = PestHeight,
                            .vAlign = excel::xlBottom,
                            .orientationCode = OrientationCode::Upwards});
    }
    int row = SheetGridRow + 1;
    for (const int point : block.points) {
        cell(QString::number(point), row++, PointAlignment);
    }
    ++row;
    writeTotalsLine(sheet, row);
    REPORT_SetProperty(sheet, QStringLiteral("b10"), cellName(last, row), static_cast<int>(RangeProperty::BorderStyle), 1);
    frameGrid(sheet, last, row);
}

void writeAllGrid(const excel::Worksheet &sheet, const FieldSheetData &data, const std::vector<SheetBlock> &blocks)
{
    const auto heading = [&](const QString &column, const QString &text) {
        const QString cell = cellName(column, SheetGridRow);
        Write_Cell(sheet, cell, cell, {.value = text, .rowHeight = AllPestHeight, .vAlign = excel::xlBottom});
    };
    heading(QStringLiteral("A"), QStringLiteral("Block"));
    heading(QStringLiteral("B"), QStringLiteral("Pnt"));
    QString last = QStringLiteral("B");
    int pest = 0;
    for (const QString &name : data.pests) {
        last = pestColumn(++pest, Column_Index(QStringLiteral("b")));
        const QString cell = cellName(last, SheetGridRow);
        Write_Cell(sheet, cell, cell,
                   {.value = name,
                    .wrap = true,
                    .merge = true,
                    .bold = true,
                    .rowHeight = AllPestHeight,
                    .vAlign = excel::xlBottom,
                    .orientationCode = OrientationCode::Upwards});
    }
    REPORT_SetProperty(sheet, cellName(QStringLiteral("A"), SheetGridRow), cellName(QStringLiteral("P"), SheetGridRow),
                       static_cast<int>(RangeProperty::RowHeight), AllPestHeight);
    frameGrid(sheet, last, writeBlockRows(sheet, blocks, SheetGridRow + 1));
}

void writeGroupedGrid(const excel::Worksheet &sheet, const FieldSheetData &data, const std::vector<SheetBlock> &blocks)
{
    const bool threes = data.layout == SheetLayout::CountInOut;
    const std::vector<PestGroup> groups = threes ? countInOutGroups() : inOutGroups();
    const double nameHeight = threes ? LineHeight : GroupHeight;
    const int captions = SheetGridRow + 1;
    const auto spanning = [&](const QString &column, const QString &text) {
        Write_Cell(sheet, cellName(column, SheetGridRow), cellName(column, captions),
                   {.value = text, .merge = true, .rowHeight = LineHeight});
    };
    spanning(QStringLiteral("A"), QStringLiteral("Block"));
    spanning(QStringLiteral("B"), QStringLiteral("Pnt"));
    QString last = QStringLiteral("B");
    const std::size_t shown = std::min(groups.size(), data.pests.size());
    for (std::size_t pest = 0; pest < shown; ++pest) {
        const PestGroup &group = groups[pest];
        last = group.last;
        Write_Cell(
            sheet, cellName(group.first, SheetGridRow), cellName(group.last, SheetGridRow),
            {.value = data.pests[pest], .wrap = true, .merge = group.first != group.last, .bold = true, .rowHeight = nameHeight});
        for (const auto &[column, text] : group.captions) {
            const bool eighthIn = !threes && pest == 7 && text == QLatin1String("In");
            const QString cell = cellName(column, captions);
            Write_Cell(sheet, cell, cell, {.value = text, .hAlign = eighthIn ? PointAlignment : excel::xlGeneral});
        }
    }
    frameGrid(sheet, last, writeBlockRows(sheet, blocks, captions + 1));
}

} // namespace reports
