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

/// The panel that takes one analysis: its boxes, what each means in a kind, and whether something was typed.
class AnalysisPanel : public QObject
{
    Q_OBJECT
public:
    AnalysisPanel(Ui::frmMonLeave &ui, SessionContext &session);

    void setKind(const AnalysisKind &kind);
    bool isOpen() const;
    /// For a new record: today, everything else empty.
    void openNew();
    /// For the record in hand; `block` is shown whether it is in the list or not.
    void openSaved(const QString &block);
    void close();
    /// What leaving the box with the focus would do, for a key that acts without leaving it.
    void settle();
    /// Takes what stands in the panel into the record in hand, its key apart. Error 6 for a number that is too large; the record
    /// is then as it was.
    void read();

    /// True when the panel may hold what has not been saved.
    bool Changed() const { return changed_; }
    void clearChanged() { changed_ = false; }

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
    void show();

    Ui::frmMonLeave &ui_;
    SessionContext &session_;
    bool changed_ = false;
};
