// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <functional>

class QCompleter;
class QEvent;
class QKeyEvent;
class QLineEdit;
class QStringListModel;
namespace controls
{
class FlexGrid;
}

namespace mainmodule
{

/// The box over one cell of a list in which its text is typed, with a list of texts to choose from below it where there are any.
/// Leaving it stores what was typed; a text that is refused keeps it open. Esc closes it without storing.
class ListCellBox : public QObject
{
    Q_OBJECT
public:
    /// Stores what was typed over a cell; false keeps the box open.
    using Store = std::function<bool(int row, int col, const QString &typed)>;
    ListCellBox(controls::FlexGrid &grid, Store store);

    bool isOpen() const { return open_; }
    /// Opens over the current cell with its text selected. With several choices to a cell, the last of the texts between
    /// semicolons is completed.
    void open(const QStringList &choices, bool severalChoices);
    /// Opens with a text typed in place of the cell's.
    void openTyping(const QString &typed, const QStringList &choices, bool severalChoices);
    /// Stores the typed text and closes. False when the box stays open.
    bool leave();
    void close();

Q_SIGNALS:
    /// The box was closed by a key that goes on to another cell: by columns (Tab) or rows (Enter, Up, Down).
    void moveRequested(int rows, int columns);
    /// Esc: what was typed is dropped.
    void abandoned();

private:
    /// True ends the event there.
    bool boxEvent(QEvent &event);
    bool keyPress(const QKeyEvent &key);
    bool choiceKey(const QKeyEvent &key);
    void leaveBy(int rows, int columns);
    void place();
    void complete(bool all);
    void choose(const QString &choice);

    controls::FlexGrid &grid_;
    QLineEdit *box_;
    QCompleter *completer_;
    QStringListModel *choices_;
    QStringList offered_;
    Store store_;
    bool severalChoices_ = false;
    bool open_ = false;
    bool leaving_ = false;
    int row_ = 0;
    int col_ = 0;
};

} // namespace mainmodule
