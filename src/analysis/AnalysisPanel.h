// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/AnalysisKinds.h"

#include <QObject>

class QLabel;
class QLineEdit;
class QWidget;
namespace Ui
{
class frmMonLeave;
}

/// The panel for one analysis: its boxes, their meaning in each kind, and whether anything was typed.
class AnalysisPanel : public QObject
{
    Q_OBJECT
public:
    AnalysisPanel(Ui::frmMonLeave &ui, SessionContext &session);

    void setKind(const AnalysisKind &kind);
    /// Places the boxes in the steps of the kind, or closer where the width is less, and returns the width taken.
    int fitBoxes(int width);
    bool isOpen() const;
    /// For a new record: today, everything else empty.
    void openNew();
    /// For the current record; `block` is shown whether or not the list contains it.
    void openSaved(const QString &block);
    void close();
    /// Formats the focused box as leaving it does, for a shortcut that does not move the focus.
    void settle();
    /// Reads the panel into the current record, except its key. Error 6 for a number that is too large; the record is then
    /// unchanged.
    void read();

    /// True when the panel may contain unsaved input.
    bool Changed() const { return changed_; }
    void clearChanged() { changed_ = false; }

Q_SIGNALS:
    /// A pasted row had more values than there were boxes left.
    void pasteTooLong(int values, int boxes);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Box {
        QWidget *cell;
        QLabel *label;
        QLineEdit *edit;
    };
    std::array<Box, AnalysisBoxes> boxes() const;
    void markChanged() { changed_ = true; }
    void blockChosen();
    void leaveBox(QLineEdit &box);
    /// Spreads a text of several cells over this box and the visible ones after it.
    void spreadPastedRow(QLineEdit &first);
    void show();

    Ui::frmMonLeave &ui_;
    SessionContext &session_;
    bool changed_ = false;
    /// Pixels from one box to the next.
    int boxStep_ = 0;
};
