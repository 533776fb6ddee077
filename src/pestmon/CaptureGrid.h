// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/CaptureCellEditor.h"
#include "pestmon/CaptureHistory.h"
#include "pestmon/CaptureTable.h"
#include "pestmon/PestMonPage.h"

#include <QHash>

class QAction;

namespace pestmon
{

/// Input of the capture grid of one instruction and one block. Counts are typed into an editor over the cell, answers are
/// toggled; each cell is saved when it is left, with the running total of its column.
class CaptureGrid : public PestMonPage
{
    Q_OBJECT
public:
    CaptureGrid(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui);

    /// Shows CurrentBlockID of the current instruction.
    void Fill_Capture();
    void clear();

    /// As CaptureTable gives them.
    std::vector<QStringList> shownRows() { return table_.shownRows(); }

    CaptureCellEditor &editor() { return editor_; }

private:
    /// What of a change reached the file.
    struct Written {
        bool cell = false;
        bool total = false;
        bool all() const { return cell && total; }
    };
    enum class Totals { Save, Skip };

    int lastPestCol() const { return capture::columnsFor(table_.pests()); }
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

    CaptureTable table_;
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
