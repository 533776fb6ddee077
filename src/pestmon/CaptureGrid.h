// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/CaptureCellEditor.h"
#include "pestmon/CaptureHistory.h"
#include "pestmon/CaptureRecords.h"
#include "pestmon/PestMonPage.h"

#include <QHash>
#include <QStringList>

#include <vector>

class QAction;

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
    /// What of a change reached the file.
    struct Written {
        bool cell = false;
        bool total = false;
        bool all() const { return cell && total; }
    };
    enum class Totals { Save, Skip };

    void layOut();
    void writeHeadings(const std::vector<QString> &names);
    QString emptyText() const;
    void fillTotals();
    void fillPoints();
    void fillPointCells(int row, int pest, const dao::Recordset &rows);
    void paint(int row, int col, const capture::CellDisplay &display);
    capture::CellDisplay shown(int row, int col) const;
    int lastPestCol() const { return capture::columnsFor(NoOfPests); }
    std::int32_t target(int pest) const { return PestIDs[static_cast<std::size_t>(pest - 1)]; }
    std::int16_t numberIn(int row, int col) const;
    std::int32_t keyIn(int row, int pest) const;
    std::int16_t point(int row) const { return numberIn(row, capture::PointColumn); }

    void click(int row, int col);
    void keyDown(QKeyEvent *event);
    void openEditor(CaptureCellEditor::OpenedBy by);
    void move(capture::Direction direction);
    void cancelled(int row, int col);
    void undo();
    void redo();
    void updateActions();
    void forgetChanges();
    /// Writes a change of the history; `report` gets the cell and the value.
    bool replay(const CaptureChange &change, const QString &report);

    CaptureChange changeTo(int row, int col, const capture::CellDisplay &cell, const capture::CellDisplay &total) const;
    /// Error 6 for a number beyond 16 bits.
    CaptureChange typedChange(int row, int col, const QString &typed) const;
    /// Stores what was typed over a cell. False keeps the editor open: the number is too large, or a point was not stored.
    bool store(int row, int col, const QString &typed);
    /// What a column's total is counted on from.
    std::int16_t totalBase(int col) const;
    void toggle(int row, int col);
    /// Writes a change and remembers it for undo. False when its cell was not stored.
    bool perform(const CaptureChange &change, Totals totals = Totals::Save);
    /// Writes a change and shows what the file then holds; the status line reports a failure.
    Written write(const CaptureChange &change, Totals totals);
    bool writePoint(const CaptureChange &change);
    bool writeTotal(const CaptureChange &change);
    /// Shows the stored values of what was not written.
    void showStored(const CaptureChange &change, const Written &written);

    QString cellName(int row, int col) const;
    QString notSaved(int row, int col) const;
    QString valueText(const CaptureChange &change) const;
    QString describe(int row, int col) const;
    QString copyText(int row, int col) const;

    int NoOfPests = 0;
    /// Of pest i at i - 1, in column order.
    std::vector<std::int32_t> PestIDs;
    CaptureRecords records_;
    CaptureHistory history_;
    /// By column: totals that could not be stored with their point. The grid shows the stored ones, the next change saves these.
    QHash<int, std::int16_t> unsavedTotals_;
    CaptureCellEditor editor_;
    QAction *undoAction_ = nullptr;
    QAction *redoAction_ = nullptr;
    /// The edited cell's share of its total.
    std::int16_t OldValue = 0;
};

} // namespace pestmon
