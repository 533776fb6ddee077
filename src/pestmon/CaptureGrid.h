// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/CaptureCells.h"
#include "pestmon/PestMonPage.h"
#include "store/clsPestMONNew.h"

#include <QStringList>

#include <vector>

/// The capture grid of one instruction and one block: a row per monitoring point, a group of columns per pest, and a row of
/// totals kept by difference. Counts are typed into the box txtG1 over a cell, answers are toggled; each cell is saved the moment
/// it is left.
class CaptureGrid : public PestMonPage
{
    Q_OBJECT
public:
    CaptureGrid(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui);

    /// Shows CurrentBlockID of the instruction in hand.
    void Fill_Capture();
    void clear();

    /// The texts of the shown columns of every row, headings included, "Yes" for an answer; as they are to be put on paper. The
    /// last cell becomes the current one.
    std::vector<QStringList> shownRows();

    /// Saves what lies in the open box, as leaving it does. False when the box stays open.
    bool leaveBox();
    bool boxIsOpen() const { return boxOpen_; }
    /// Closes the box and drops what lies in it.
    void closeBox();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void layOut();
    void writeHeadings(const std::vector<QString> &names);
    void fillTotals();
    void fillPoints();
    void fillPointCells(int row, int pest, const dao::Recordset &rows);
    void paint(int row, int col, const capture::CellPicture &picture);
    bool isCount() const;
    int lastPestCol() const { return capture::columnsFor(NoOfPests); }
    std::int16_t numberIn(int row, int col) const;
    std::int32_t keyIn(int row, int pest) const;
    std::int16_t point(int row) const { return numberIn(row, capture::PointColumn); }

    void click(int row, int col);
    void keyDown(QKeyEvent *event);
    /// A box whose value could not be saved keeps its place until it is: goes back to it. False when none is open.
    bool returnToOpenBox();
    void openBox();
    void placeBox();
    bool savePoint();
    void saveTypedTotal();
    clsPestMONNew::Status storePoint(const capture::PestColumn &column, int row, std::int16_t count);
    /// Paints a total and stores it; an unwritten one is named in the status line, and gives false.
    bool saveTotal(const capture::PestColumn &column, const capture::CellPicture &total);
    void toggle(int row, int col);
    /// False when the total was to be changed and could not be stored.
    bool Toggle_PMYes(const capture::PestColumn &column, bool yes);
    QString cellName(int row, const capture::PestColumn &column) const;
    QString describe(int row, int col) const;

    int NoOfPests = 0;
    /// Of pest i at i - 1, in column order.
    std::vector<std::int32_t> PestIDs;
    bool boxOpen_ = false;
    bool leaving_ = false;
    int BoxRow = 0;
    int BoxCol = 0;
    std::int16_t OldValue = 0;
};
