// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/DatePicker.h"

#include "platform/basic/Formats.h"
#include "platform/controls/CalendarPopup.h"
#include "platform/controls/Theme.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QRegularExpressionValidator>
#include <QTimer>

namespace controls
{

namespace
{

/// A shortcut acts while the focus stays here. Alt by itself may also lead to another window.
bool mayStartAction(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Insert || ((key.modifiers() & Qt::AltModifier) && key.key() != Qt::Key_Alt);
}

bool isCalendarKey(const QKeyEvent &key)
{
    const bool arrow = key.key() == Qt::Key_Down || key.key() == Qt::Key_Up;
    return key.key() == Qt::Key_F4 || (arrow && (key.modifiers() & Qt::AltModifier));
}

QString textOf(QDate date)
{
    return QStringLiteral("%1/%2/%3")
        .arg(date.year(), 4, 10, QChar(u'0'))
        .arg(date.month(), 2, 10, QChar(u'0'))
        .arg(date.day(), 2, 10, QChar(u'0'));
}

/// A typed date; nothing for other text. A year before 1900, such as 0511, is nearly always mistyped.
std::optional<QDate> readDate(const QString &text)
{
    constexpr int earliestYear = 1900;
    const QDate date = basic::dateFromText(text, basic::DateOrder::Typed);
    return date.isValid() && date.year() >= earliestYear ? std::optional(date) : std::nullopt;
}

/// Keyboards of some locales type digits of their own.
QString withPlainDigits(QString text)
{
    for (QChar &character : text) {
        if (character.isDigit()) {
            character = QChar(u'0' + character.digitValue());
        }
    }
    return text;
}

} // namespace

DatePicker::DatePicker(QWidget *parent)
    : QLineEdit(parent), opensCalendar_(addAction(Theme::icon(QStringLiteral("calendar")), TrailingPosition))
{
    setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[\\p{Nd}/. -]*")), this));
    opensCalendar_->setToolTip(tr("Calendar"));
    connect(opensCalendar_, &QAction::triggered, this, &DatePicker::openCalendar);
    setValue(QDate::currentDate());
}

void DatePicker::setValue(QDate date)
{
    if (date.isValid()) {
        value_ = date;
        setText(textOf(date));
    }
}

void DatePicker::choose(QDate date)
{
    const QDate former = value_;
    setValue(date);
    if (value_ != former) {
        Q_EMIT Change();
    }
}

bool DatePicker::acceptText()
{
    const QString typed = text();
    if (typed == textOf(value_)) {
        return true;
    }
    const std::optional<QDate> date = readDate(withPlainDigits(typed));
    if (date) {
        choose(*date);
    } else {
        setValue(value_);
        Q_EMIT refused(tr("\"%1\" is not a valid date; keeping %2").arg(typed, text()));
    }
    return date.has_value();
}

bool DatePicker::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && mayStartAction(static_cast<QKeyEvent &>(*event)) && !acceptText()) {
        // Nothing is started, or saved, with a date that the user did not mean.
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void DatePicker::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    if (isCalendarKey(*event)) {
        openCalendar();
    } else if (key == Qt::Key_Up || key == Qt::Key_Down) {
        step(key == Qt::Key_Up ? 1 : -1);
    } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        acceptText();
        selectAll();
        event->ignore();
    } else if (key == Qt::Key_Escape && text() != textOf(value_)) {
        setValue(value_);
        selectAll();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

DatePicker::Part DatePicker::partAt(int position) const
{
    const QString digits = text();
    const auto isDigit = [&digits](int index) { return index >= 0 && index < digits.size() && digits.at(index).isDigit(); };
    int begin = position;
    while (isDigit(begin - 1)) {
        --begin;
    }
    int end = position;
    while (isDigit(end)) {
        ++end;
    }
    return {begin, end - begin};
}

void DatePicker::step(int steps)
{
    if (isReadOnly() || !acceptText()) {
        return;
    }
    const bool whole = hasSelectedText() && selectedText() == text();
    const Part part = partAt(hasSelectedText() ? selectionStart() : cursorPosition());
    if (!whole && part.begin == 0) {
        choose(value_.addYears(steps));
    } else if (!whole && part.begin + part.length < text().size()) {
        choose(value_.addMonths(steps));
    } else {
        choose(value_.addDays(steps));
    }
    whole ? selectAll() : setSelection(part.begin, part.length);
}

/// A click selects the year, month or day, which typing then replaces.
void DatePicker::mouseReleaseEvent(QMouseEvent *event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (!hasSelectedText() && text() == textOf(value_)) {
        const Part part = partAt(cursorPosition());
        setSelection(part.begin, part.length);
    }
}

void DatePicker::openCalendar()
{
    if (isReadOnly() || !acceptText()) {
        return;
    }
    setFocus();
    if (!calendar_) {
        calendar_ = new CalendarPopup(this);
        connect(calendar_, &CalendarPopup::chosen, this, &DatePicker::choose);
    }
    calendar_->openAt(*this, value_);
}

void DatePicker::focusOutEvent(QFocusEvent *event)
{
    // Neither a menu or the calendar of the field nor another window ends the typing.
    const bool left = event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason;
    if (left && !acceptText() && event->reason() == Qt::MouseFocusReason) {
        dropNextPress();
    }
    QLineEdit::focusOutEvent(event);
    if (left) {
        Q_EMIT LostFocus();
    }
}

void DatePicker::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    opensCalendar_->setVisible(!isReadOnly());
}

/// The focus moves before the press reaches the clicked widget, in the same turn of the event loop.
void DatePicker::dropNextPress()
{
    qApp->installEventFilter(this);
    QTimer::singleShot(0, this, [this] { qApp->removeEventFilter(this); });
}

bool DatePicker::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        qApp->removeEventFilter(this);
        return true;
    }
    return QLineEdit::eventFilter(watched, event);
}

} // namespace controls
