// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/ItemCombo.h"

#include "platform/basic/RunTimeError.h"

#include <QCompleter>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QWheelEvent>

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
    connect(this, &QComboBox::activated, this, [this](int index) {
        chosen_ = index;
        Q_EMIT Click();
    });
    // When editing ends, QComboBox emits activated for an equal entry, but not for the one chosen before.
    connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString &text) {
        chosen_ = indexOf(text);
        Q_EMIT Change();
    });
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
}

void ItemCombo::setTypingAllowed(bool allowed)
{
    lineEdit()->setReadOnly(!allowed);
}

bool ItemCombo::eventFilter(QObject *watched, QEvent *event)
{
    const bool opens = event->type() == QEvent::MouseButtonPress
        || (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Space);
    if (opens && watched == lineEdit() && lineEdit()->isReadOnly() && isEnabled()) {
        showPopup();
        return true;
    }
    return QComboBox::eventFilter(watched, event);
}

void ItemCombo::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

} // namespace controls
