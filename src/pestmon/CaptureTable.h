// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/CaptureRecords.h"

#include <QStringList>

#include <vector>

namespace controls
{
class FlexGrid;
}

namespace pestmon
{

/// Layout and contents of the capture grid: headings, totals, points, and the record keys in hidden columns.
class CaptureTable
{
public:
    CaptureTable(controls::FlexGrid &grid, ScreenHost &host);

    void clear();
    /// Reads CurrentBlockID of the current instruction; its first point becomes the current row.
    void fill();
    /// The texts of the visible columns of every row, with the headings, and "Yes" for an answer, for printing. The last cell
    /// becomes the current one.
    std::vector<QStringList> shownRows();

    bool isCount() const { return records_.isCount(); }
    const CaptureRecords &records() const { return records_; }
    int pests() const { return NoOfPests; }
    int lastPointRow() const;
    /// Key of pest i, counted from 1.
    std::int32_t target(int pest) const { return PestIDs[static_cast<std::size_t>(pest - 1)]; }
    std::optional<capture::PestColumn> column(int col) const { return capture::pestColumn(col, NoOfPests); }
    /// Key of the record behind a pest's cells; 0 without one.
    std::int32_t key(int row, int pest) const;
    std::int16_t number(int row, int col) const;
    std::int16_t point(int row) const { return number(row, capture::PointColumn); }

    capture::CellDisplay shown(int row, int col) const;
    void paint(int row, int col, const capture::CellDisplay &display);
    /// Such as "point 3, Red scale".
    QString cellName(int row, int col) const;

private:
    void layOut();
    void writeHeadings(const std::vector<QString> &names);
    void fillTotals();
    void fillPoints();
    void fillPointCells(int row, int pest, const dao::Recordset &rows);
    /// Why there is nothing to fill in; nothing when there is.
    QString emptyText() const;
    QString describe(int row, int col) const;
    QString copyText(int row, int col) const;

    controls::FlexGrid &grid_;
    ScreenHost &host_;
    CaptureRecords records_;
    int NoOfPests = 0;
    /// Of pest i at i - 1, in column order.
    std::vector<std::int32_t> PestIDs;
};

} // namespace pestmon
