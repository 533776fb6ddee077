// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/CaptureCellEditor.h"
#include "pestmon/CaptureCells.h"
#include "pestmon/PestMonPage.h"
#include "store/clsPestMONNew.h"

#include <QStringList>

#include <vector>

namespace pestmon
{

/// The capture grid of one instruction and one block: a row per monitoring point, a group of columns per pest, and a row of
/// running totals. Counts are typed into an editor over the cell, answers are toggled; each cell is saved when it is left.
class CaptureGrid : public PestMonPage
{
    Q_OBJECT
public:
    CaptureGrid(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui);

    /// Shows CurrentBlockID of the current instruction.
    void Fill_Capture();
    void clear();

    /// The texts of the visible columns of every row, with the headings, and "Yes" for an answer, for printing. The last cell
    /// becomes the current one.
    std::vector<QStringList> shownRows();

    CaptureCellEditor &editor() { return editor_; }

private:
    void layOut();
    void writeHeadings(const std::vector<QString> &names);
    void fillTotals();
    void fillPoints();
    void fillPointCells(int row, int pest, const dao::Recordset &rows);
    void paint(int row, int col, const capture::CellDisplay &display);
    bool isCount() const;
    int lastPestCol() const { return capture::columnsFor(NoOfPests); }
    std::int16_t numberIn(int row, int col) const;
    std::int32_t keyIn(int row, int pest) const;
    std::int16_t point(int row) const { return numberIn(row, capture::PointColumn); }

    void click(int row, int col);
    void keyDown(QKeyEvent *event);
    void openEditor();
    /// What was typed over a cell; false when a point was not stored.
    bool store(int row, int col, const QString &typed);
    bool savePoint(int row, const capture::PestColumn &column, const QString &typed);
    void saveTypedTotal(const capture::PestColumn &column, const QString &typed);
    clsPestMONNew::Status storePoint(const capture::PestColumn &column, int row, std::int16_t count);
    /// Paints and stores a total. False when it was not stored, which the status line reports.
    bool saveTotal(const capture::PestColumn &column, const capture::CellDisplay &total);
    void toggle(int row, int col);
    /// False when a changed total could not be stored.
    bool Toggle_PMYes(const capture::PestColumn &column, bool yes);
    QString cellName(int row, const capture::PestColumn &column) const;
    QString describe(int row, int col) const;

    int NoOfPests = 0;
    /// Of pest i at i - 1, in column order.
    std::vector<std::int32_t> PestIDs;
    CaptureCellEditor editor_;
    /// The edited cell's share of its total.
    std::int16_t OldValue = 0;
};

} // namespace pestmon
