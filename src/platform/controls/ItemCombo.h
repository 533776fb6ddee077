// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QComboBox>

namespace controls
{

/// An editable list of texts, each with a key as item data. The text need not be in the list; the list index is then -1. What is
/// typed is completed to the first entry that begins with it. The mouse wheel over a closed box changes nothing.
class ItemCombo : public QComboBox
{
    Q_OBJECT
public:
    explicit ItemCombo(QWidget *parent = nullptr);

    /// Silent.
    void AddItem(const QString &text, qint32 itemData = 0);
    /// Empties list and text. Silent.
    void Clear();
    int ListCount() const { return count(); }
    int ListIndex() const;
    /// Raises Click, also for -1 and for the index it already had. -1 empties the text. Error 9 out of range.
    void setListIndex(int index);
    /// Key of an entry; error 9 for an index that is not in the list.
    qint32 ItemData(int index) const;
    QString List(int index) const { return itemText(index); }
    QString Text() const { return currentText(); }
    /// Shows a text, in the list or not; the index follows the first equal entry. Silent.
    void setText(const QString &text);
    void showPopup() override;
    /// When false the user can choose but not type: a click or Space opens the list, a letter opens it at the first matching
    /// entry if there is one, Home and End choose the first and last one. Tab takes the current entry of the open list and goes
    /// on.
    void setTypingAllowed(bool allowed);

Q_SIGNALS:
    /// The user chose an entry, also the one that was chosen already, or ended editing with the text of another one; or
    /// setListIndex was called.
    void Click();
    /// After that Click, when the entry was chosen in the open list by the mouse or Enter.
    void ChosenFromList();
    /// The user typed in the box; the index follows the first equal entry here too.
    void Change();

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    int indexOf(const QString &text) const;
    void textEdited(const QString &text);
    void choose(int index);
    bool tabLeavesList(const QKeyEvent &event);

    /// The chosen entry; QComboBox's own index clings to an entry while another text is typed.
    int chosen_ = -1;
    /// The list was opened, and nothing has been chosen or typed since.
    bool listOpened_ = false;
    /// The key in progress deletes; completing would bring the text back.
    bool deleting_ = false;
};

} // namespace controls
