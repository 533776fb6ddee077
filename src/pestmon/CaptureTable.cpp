// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/CaptureTable.h"

#include "platform/basic/Numbers.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/RedrawPause.h"
#include "screens/ScreenHost.h"

#include <array>

namespace pestmon
{

using controls::CellAlignment;
namespace cellColour = controls::cellColour;

namespace
{

constexpr int TallRow = 400;
constexpr int PointWidth = 500;
constexpr int ValueWidth = 1000;

} // namespace

CaptureTable::CaptureTable(controls::FlexGrid &grid, ScreenHost &host) : grid_(grid), host_(host), records_(host)
{
    grid_.setMuteZeros(true);
    grid_.setCellDescriber([this](int row, int col) { return describe(row, col); });
    grid_.setCellCopyText([this](int row, int col) { return copyText(row, col); });
    layOut();
}

void CaptureTable::clear()
{
    NoOfPests = 0;
    PestIDs.clear();
    layOut();
}

std::int16_t CaptureTable::number(int row, int col) const
{
    return basic::toInteger16(basic::Val(grid_.TextMatrix(row, col)));
}

std::int32_t CaptureTable::key(int row, int pest) const
{
    return basic::toLong32(basic::Val(grid_.TextMatrix(row, capture::keyColumn(pest))));
}

void CaptureTable::paint(int row, int col, const capture::CellDisplay &display)
{
    grid_.setTextMatrix(row, col, display.text);
    grid_.setCellBackColor(row, col, display.colour);
    grid_.setCellAlignment(row, col, CellAlignment::Centre);
}

void CaptureTable::layOut()
{
    grid_.Clear();
    grid_.setRows(capture::FirstPointRow);
    grid_.setCols(capture::columnsFor(NoOfPests));
    grid_.setFixedRows(capture::TotalRow);
    grid_.setFrozenRows(1);
    grid_.setFixedCols(capture::FirstPestColumn);
    grid_.setRowHeight(capture::PestNameRow, TallRow);
    grid_.setRowHeight(capture::TotalRow, TallRow);
    grid_.setColWidth(0, 0);
    grid_.setColWidth(1, 0);
    grid_.setColWidth(capture::PointColumn, PointWidth);
    for (int pest = 1; pest <= NoOfPests; ++pest) {
        grid_.setColWidth(capture::keyColumn(pest), 0);
        grid_.setColWidth(capture::valueColumn(pest, 1), ValueWidth);
        grid_.setColWidth(capture::valueColumn(pest, 2), 0);
        grid_.setColWidth(capture::valueColumn(pest, 3), 0);
    }
    grid_.setMergeCol(capture::PointColumn, true);
    grid_.setMergeRow(capture::PestNameRow, true);
    grid_.setColAlignment(capture::PointColumn, CellAlignment::Centre);
    grid_.setTextMatrix(capture::PestNameRow, 0, QStringLiteral("PMTransID"));
    grid_.setTextMatrix(capture::HeadingRow, capture::PointColumn, QStringLiteral("Point"));
    grid_.setTextMatrix(capture::TotalRow, capture::PointColumn, QStringLiteral("(Total)"));
    for (const int row : {capture::HeadingRow, capture::TotalRow}) {
        grid_.setCellFontBold(row, capture::PointColumn, true);
    }
}

void CaptureTable::writeHeadings(const std::vector<QString> &names)
{
    const std::array<QString, 3> PMHeader{isCount() ? QStringLiteral("Cnt") : QStringLiteral("Y/N"), QStringLiteral("In"),
                                          QStringLiteral("Out")};
    for (int pest = 1; pest <= NoOfPests; ++pest) {
        for (int value = 1; value <= capture::ValuesPerPest; ++value) {
            const int col = capture::valueColumn(pest, value);
            grid_.setTextMatrix(capture::PestNameRow, col, names[static_cast<std::size_t>(pest - 1)]);
            grid_.setTextMatrix(capture::HeadingRow, col, PMHeader[static_cast<std::size_t>(value - 1)]);
            for (const int row : {capture::PestNameRow, capture::HeadingRow, capture::TotalRow}) {
                grid_.setCellFontBold(row, col, true);
                grid_.setCellAlignment(row, col, CellAlignment::Centre);
            }
            grid_.setCellBackColor(capture::TotalRow, col, cellColour::Green);
        }
    }
}

void CaptureTable::fill()
{
    const controls::RedrawPause pause(grid_);
    clsPestMONNew &store = host_.objPestMON();
    const int instruction = host_.session().CurrentPMTransID;
    NoOfPests = store.No_of_Pests(instruction);
    PestIDs.clear();
    std::vector<QString> names;
    for (dao::Recordset rows = store.Get_Pests_For_Transaction(instruction); !rows.Eof(); rows.MoveNext()) {
        PestIDs.push_back(rows.longValue("CCTargetID"));
        names.push_back(store.CTarget_Is(PestIDs.back()));
    }
    layOut();
    writeHeadings(names);
    fillTotals();
    fillPoints();
    grid_.setEmptyText(emptyText());
    grid_.setCell(capture::FirstPointRow, qMin(capture::FirstValueColumn, grid_.Cols() - 1));
    grid_.setTopRow(capture::FirstPointRow);
    if (NoOfPests > 0) {
        grid_.setLeftCol(capture::FirstPestColumn);
    }
}

int CaptureTable::lastPointRow() const
{
    // The last row stays empty.
    return grid_.Rows() - 2;
}

QString CaptureTable::emptyText() const
{
    if (NoOfPests == 0) {
        return QStringLiteral("The instruction has no pests. Close this tab, press Edit and select pests.");
    }
    const bool noPoints = grid_.TextMatrix(capture::FirstPointRow, capture::PointColumn).isEmpty();
    return noPoints ? QStringLiteral("The block has no monitoring points. Close this tab, press Edit and save the instruction.")
                    : QString();
}

void CaptureTable::fillTotals()
{
    for (int pest = 1; pest <= NoOfPests; ++pest) {
        const dao::Recordset rows = records_.totals(target(pest));
        if (rows.Eof()) {
            continue;
        }
        grid_.setTextMatrix(capture::TotalRow, capture::keyColumn(pest), rows.text("PMDataMaxID"));
        for (int value = 1; value <= capture::ValuesPerPest; ++value) {
            paint(capture::TotalRow, capture::valueColumn(pest, value), records_.total(rows, value));
        }
    }
}

void CaptureTable::fillPoints()
{
    grid_.setRows(capture::FirstPointRow + 1);
    int row = capture::FirstPointRow - 1;
    std::optional<std::int32_t> shownPoint;
    // One set for the whole block, by point, pest and key; the first row of a point and pest decides.
    dao::Recordset rows = host_.objPestMON().Get_PestData_for_Block_of_Transaction(host_.session().CurrentPMTransID,
                                                                                   host_.session().CurrentBlockID);
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::int32_t point = rows.longValue("PMBPunt");
        if (shownPoint != point) {
            shownPoint = point;
            ++row;
            grid_.setRows(row + 2);
            grid_.setTextMatrix(row, capture::PointColumn, QString::number(point));
        }
        // A file from elsewhere may name a pest twice.
        for (int pest = 1; pest <= NoOfPests; ++pest) {
            const bool empty = grid_.TextMatrix(row, capture::keyColumn(pest)).isEmpty();
            if (empty && target(pest) == rows.longValue("CTargetID")) {
                fillPointCells(row, pest, rows);
            }
        }
    }
}

void CaptureTable::fillPointCells(int row, int pest, const dao::Recordset &rows)
{
    grid_.setTextMatrix(row, capture::keyColumn(pest), rows.text("PMDataID"));
    for (int value = 1; value <= capture::ValuesPerPest; ++value) {
        paint(row, capture::valueColumn(pest, value), records_.point(rows, value));
    }
}

capture::CellDisplay CaptureTable::shown(int row, int col) const
{
    if (row != capture::TotalRow && !isCount()) {
        return capture::answer(grid_.CellBackColor(row, col) == cellColour::Red);
    }
    return {grid_.TextMatrix(row, col), grid_.CellBackColor(row, col).value_or(cellColour::White), number(row, col)};
}

QString CaptureTable::cellName(int row, int col) const
{
    const QString pest = grid_.TextMatrix(capture::PestNameRow, col);
    return row == capture::TotalRow ? QStringLiteral("total, %1").arg(pest)
                                    : QStringLiteral("point %1, %2").arg(grid_.TextMatrix(row, capture::PointColumn), pest);
}

QString CaptureTable::describe(int row, int col) const
{
    const auto column = capture::pestColumn(col, NoOfPests);
    if (row < capture::TotalRow || !column) {
        return grid_.TextMatrix(row, col);
    }
    const QString pest = grid_.TextMatrix(capture::PestNameRow, col);
    const QString position = row == capture::TotalRow
        ? QStringLiteral("total")
        : QStringLiteral("point %1").arg(grid_.TextMatrix(row, capture::PointColumn));
    const auto colour = grid_.CellBackColor(row, col);
    const bool isAnswer = !isCount() && row != capture::TotalRow && colour.has_value();
    const QString value =
        isAnswer ? (colour == cellColour::Red ? QStringLiteral("Yes") : QStringLiteral("No")) : grid_.TextMatrix(row, col);
    return QStringLiteral("%1, %2, %3").arg(position, pest, value);
}

QString CaptureTable::copyText(int row, int col) const
{
    const bool isAnswer = row > capture::TotalRow && !isCount() && key(row, capture::pestColumn(col, NoOfPests)->pest) != 0;
    return isAnswer ? (shown(row, col).value != 0 ? QStringLiteral("Yes") : QStringLiteral("No")) : grid_.TextMatrix(row, col);
}

std::vector<QStringList> CaptureTable::shownRows()
{
    std::vector<QStringList> rows;
    for (int row = 0; row < grid_.Rows(); ++row) {
        QStringList cells;
        for (int col = 1; col < grid_.Cols(); ++col) {
            if (grid_.ColWidth(col) != 0) {
                cells.append(grid_.CellBackColor(row, col) == controls::cellColour::Red ? QStringLiteral("Yes")
                                                                                        : grid_.TextMatrix(row, col));
            }
        }
        rows.push_back(cells);
    }
    if (grid_.Rows() > 0 && grid_.Cols() > 1) {
        grid_.setCell(grid_.Rows() - 1, grid_.Cols() - 1);
    }
    return rows;
}

} // namespace pestmon
