// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/ItemCombo.h"

#include "platform/basic/RunTimeError.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QWheelEvent>

#include <utility>

namespace controls
{

namespace
{

basic::RunTimeError outOfRange(int index)
{
    return {basic::ErrorNumber::SubscriptOutOfRange, QStringLiteral("The list has no entry %1.").arg(index)};
}

} // namespace

ItemCombo::ItemCombo(QWidget *parent) : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setFocusPolicy(Qt::StrongFocus);
    setMaxVisibleItems(16);
    // The style sheet styles entries only with this delegate.
    setItemDelegate(new QStyledItemDelegate(this));
    lineEdit()->installEventFilter(this);
    view()->installEventFilter(this);
    connect(this, &QComboBox::activated, this, [this](int index) {
        chosen_ = index;
        // A text wider than the field shows its beginning.
        lineEdit()->setCursorPosition(0);
        Q_EMIT Click();
        if (std::exchange(listOpened_, false)) {
            Q_EMIT ChosenFromList();
        }
    });
    // When editing ends, QComboBox emits activated for an equal entry, but not for the one chosen before.
    connect(lineEdit(), &QLineEdit::textEdited, this, &ItemCombo::textEdited);
}

void ItemCombo::AddItem(const QString &text, qint32 itemData)
{
    const QSignalBlocker silent(this);
    const QString shown = currentText();
    addItem(text, itemData);
    // Otherwise the first entry would select itself.
    if (chosen_ < 0) {
        setCurrentIndex(-1);
        setEditText(shown);
    }
}

void ItemCombo::Clear()
{
    const QSignalBlocker silent(this);
    clear();
    clearEditText();
    chosen_ = -1;
}

int ItemCombo::ListIndex() const
{
    return chosen_;
}

void ItemCombo::setListIndex(int index)
{
    if (index < -1 || index >= count()) {
        throw outOfRange(index);
    }
    {
        const QSignalBlocker silent(this);
        setCurrentIndex(index);
        setEditText(index < 0 ? QString() : itemText(index));
        lineEdit()->setCursorPosition(0);
        chosen_ = index;
    }
    Q_EMIT Click();
}

qint32 ItemCombo::ItemData(int index) const
{
    if (index < 0 || index >= count()) {
        throw outOfRange(index);
    }
    return itemData(index).toInt();
}

int ItemCombo::indexOf(const QString &text) const
{
    return findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
}

void ItemCombo::setText(const QString &text)
{
    const QSignalBlocker silent(this);
    chosen_ = indexOf(text);
    setCurrentIndex(chosen_);
    setEditText(text);
    lineEdit()->setCursorPosition(0);
}

void ItemCombo::textEdited(const QString &text)
{
    const bool completes = !deleting_ && !text.isEmpty() && lineEdit()->cursorPosition() == text.size();
    const int match = completes ? findText(text, Qt::MatchStartsWith) : -1;
    if (match >= 0) {
        lineEdit()->setText(itemText(match));
        lineEdit()->setSelection(static_cast<int>(itemText(match).size()),
                                 static_cast<int>(text.size() - itemText(match).size()));
    }
    chosen_ = indexOf(lineEdit()->text());
    Q_EMIT Change();
}

void ItemCombo::choose(int index)
{
    if (index >= 0 && index < count()) {
        setCurrentIndex(index);
        Q_EMIT activated(index);
    }
}

void ItemCombo::showPopup()
{
    listOpened_ = true;
    QComboBox::showPopup();
}

void ItemCombo::setTypingAllowed(bool allowed)
{
    lineEdit()->setReadOnly(!allowed);
}

/// Otherwise Tab would leave the list open over the next field, without the entry that it shows as current.
bool ItemCombo::tabLeavesList(const QKeyEvent &event)
{
    const bool next = event.key() == Qt::Key_Tab;
    if (!next && event.key() != Qt::Key_Backtab) {
        return false;
    }
    const int current = view()->currentIndex().row();
    hidePopup();
    listOpened_ = false;
    choose(current);
    focusNextPrevChild(next);
    return true;
}

/// A text wider than the field is shown whole in a tool tip.
bool ItemCombo::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && fontMetrics().horizontalAdvance(Text()) > lineEdit()->width()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), Text(), this);
        return true;
    }
    return QComboBox::event(event);
}

bool ItemCombo::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == view() && event->type() == QEvent::KeyPress) {
        return tabLeavesList(*static_cast<QKeyEvent *>(event)) || QComboBox::eventFilter(watched, event);
    }
    if (watched != lineEdit() || !lineEdit()->isReadOnly() || !isEnabled()) {
        return QComboBox::eventFilter(watched, event);
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return true;
    case QEvent::MouseButtonRelease:
        // Opened by the press, the list would close on the release.
        showPopup();
        return true;
    default:
        return QComboBox::eventFilter(watched, event);
    }
}

void ItemCombo::keyPressEvent(QKeyEvent *event)
{
    const bool plain = !(event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    const bool typed = plain && !event->text().isEmpty();
    listOpened_ = false;
    deleting_ = event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete;
    if (!lineEdit()->isReadOnly() || !plain) {
        QComboBox::keyPressEvent(event);
    } else if (event->key() == Qt::Key_Home) {
        choose(0);
    } else if (event->key() == Qt::Key_End) {
        choose(count() - 1);
    } else if (event->key() == Qt::Key_Space) {
        showPopup();
    } else if (typed && event->text().at(0).isLetterOrNumber()) {
        if (findText(event->text(), Qt::MatchStartsWith) >= 0) {
            showPopup();
            // Not the letters of a search before.
            view()->keyboardSearch({});
            view()->keyboardSearch(event->text());
        }
    } else {
        QComboBox::keyPressEvent(event);
    }
}

void ItemCombo::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

} // namespace controls
