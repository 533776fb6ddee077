// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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

/// The box over one cell of the capture grid in which a count is typed. Leaving it, by a key or by losing the focus within the
/// window, stores what was typed; a value that could not be stored keeps it open.
class CaptureCellEditor : public QObject
{
    Q_OBJECT
public:
    /// Stores what was typed over a cell; false keeps the editor open.
    using Store = std::function<bool(int row, int col, const QString &typed)>;
    CaptureCellEditor(controls::FlexGrid &grid, QLineEdit &box, Store store);

    bool isOpen() const { return open_; }
    /// Opens over the current cell with the cell's text selected.
    void open();
    /// Goes back to an open editor; false when none is open.
    bool resume();
    /// Stores the typed text and closes. False when the editor stays open.
    bool leave();
    /// Closes without storing.
    void close();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool keyPress(const QKeyEvent &key);
    void place();

    controls::FlexGrid &grid_;
    QLineEdit &box_;
    Store store_;
    bool open_ = false;
    bool leaving_ = false;
    int BoxRow = 0;
    int BoxCol = 0;
};

} // namespace pestmon
