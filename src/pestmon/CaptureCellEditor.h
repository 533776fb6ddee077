// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/CaptureCells.h"

#include <QObject>

#include <functional>

class QKeyEvent;
class QLineEdit;
namespace controls
{
class FlexGrid;
}

namespace pestmon
{

/// Ctrl+Y, and what else the platform uses.
bool isRedoKey(const QKeyEvent &key);

/// The box over one cell of the capture grid in which a count is typed. Leaving it, by a key or by losing the focus within the
/// window, stores what was typed; a value that could not be stored keeps it open. Esc closes it without storing.
class CaptureCellEditor : public QObject
{
    Q_OBJECT
public:
    /// Stores what was typed over a cell; false keeps the editor open.
    using Store = std::function<bool(int row, int col, const QString &typed)>;
    CaptureCellEditor(controls::FlexGrid &grid, QLineEdit &box, Store store);

    bool isOpen() const { return open_; }
    /// Opened by a move from another cell, the editor stores only what was really typed.
    enum class OpenedBy { User, Move };
    /// Opens over the current cell with the cell's text selected.
    void open(OpenedBy by = OpenedBy::User);
    /// Goes back to an open editor; false when none is open.
    bool resume();
    /// Stores the typed text and closes. False when the editor stays open.
    bool leave();
    /// Closes without storing.
    void close();

Q_SIGNALS:
    /// Tab, Shift+Tab, "+" of the number pad, or Left or Right at an end of the text; the editor is closed.
    void moveRequested(pestmon::capture::Direction direction);
    /// Ctrl+Z or Ctrl+Y with nothing typed; the editor is closed.
    void undoRequested();
    void redoRequested();
    /// Esc closed the editor over a cell.
    void cancelled(int row, int col);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool keyPress(const QKeyEvent &key);
    bool historyKey(const QKeyEvent &key);
    std::optional<capture::Direction> moveFor(const QKeyEvent &key) const;
    void leaveBy(int rows);
    void place();

    controls::FlexGrid &grid_;
    QLineEdit &box_;
    Store store_;
    bool open_ = false;
    bool leaving_ = false;
    OpenedBy openedBy_ = OpenedBy::User;
    int BoxRow = 0;
    int BoxCol = 0;
};

} // namespace pestmon
