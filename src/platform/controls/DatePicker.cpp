// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/DatePicker.h"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>

namespace controls
{

namespace
{

/// A button reached by its letter acts while the focus stays where it is. Alt by itself also leads to other windows.
bool mayStartAction(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Insert || ((key.modifiers() & Qt::AltModifier) && key.key() != Qt::Key_Alt);
}

} // namespace

DatePicker::DatePicker(QWidget *parent) : QDateEdit(parent), announced_(date())
{
    setDisplayFormat(QStringLiteral("yyyy/MM/dd"));
    setCalendarPopup(true);
    // A half-typed year must not be taken for a date: typing counts when it is finished, arrows and calendar at once.
    setKeyboardTracking(false);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QDateEdit::dateChanged, this, &DatePicker::announce);
}

void DatePicker::setValue(QDate date)
{
    if (!date.isValid()) {
        return;
    }
    const QSignalBlocker silent(this);
    setDate(date);
    announced_ = this->date();
}

void DatePicker::announce(QDate date)
{
    if (date != announced_) {
        announced_ = date;
        Q_EMIT Change();
    }
}

bool DatePicker::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && mayStartAction(static_cast<QKeyEvent &>(*event))) {
        interpretText();
    }
    return QDateEdit::event(event);
}

void DatePicker::keyPressEvent(QKeyEvent *event)
{
    // Without a selection Qt refuses digits in a section that is full already.
    const int full = currentSection() == YearSection ? 4 : 2;
    const bool digit = !event->text().isEmpty() && event->text().at(0).isDigit();
    if (digit && !lineEdit()->hasSelectedText() && sectionText(currentSection()).trimmed().size() == full) {
        setSelectedSection(currentSection());
    }
    QDateEdit::keyPressEvent(event);
}

void DatePicker::focusOutEvent(QFocusEvent *event)
{
    QDateEdit::focusOutEvent(event);
    // The calendar takes the focus for a moment without the field being left.
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        Q_EMIT LostFocus();
    }
}

void DatePicker::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

} // namespace controls
