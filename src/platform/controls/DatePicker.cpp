// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/DatePicker.h"

#include "platform/controls/DateText.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>
#include <QTextCharFormat>
#include <QTimer>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace controls
{

namespace
{

const QString Separators = QStringLiteral("/-.");

/// A button reached by its letter acts while the focus stays where it is. Alt by itself also leads to other windows.
bool mayStartAction(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Insert || ((key.modifiers() & Qt::AltModifier) && key.key() != Qt::Key_Alt);
}

bool opensCalendar(const QKeyEvent &key)
{
    const bool arrow = key.key() == Qt::Key_Down || key.key() == Qt::Key_Up;
    return key.key() == Qt::Key_F4 || (arrow && (key.modifiers() & Qt::AltModifier));
}

bool endsTyping(const QKeyEvent &key)
{
    switch (key.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Enter:
    case Qt::Key_Return:
        return true;
    default:
        return false;
    }
}

bool changesText(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Backspace || key.key() == Qt::Key_Delete || key.matches(QKeySequence::Paste)
        || key.matches(QKeySequence::Cut);
}

/// The character that a key types, nothing for a command.
QChar typedCharacter(const QKeyEvent &key)
{
    const bool command = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return command || key.text().isEmpty() ? QChar() : key.text().at(0);
}

/// A stretch of digits in the typed text, between separators.
struct Part {
    int begin;
    int length;

    int end() const { return begin + length; }
};

std::vector<Part> partsOf(const QString &text)
{
    std::vector<Part> parts{{0, 0}};
    for (int i = 0; i < text.size(); ++i) {
        if (Separators.contains(text.at(i))) {
            parts.push_back({i + 1, 0});
        } else {
            ++parts.back().length;
        }
    }
    return parts;
}

std::vector<Part>::const_iterator partAt(const std::vector<Part> &parts, int position)
{
    return std::find_if(parts.begin(), std::prev(parts.end()), [position](const Part &part) { return position <= part.end(); });
}

constexpr int YearDigits = 4;
constexpr int OtherDigits = 2;

/// Only a text that begins with its year is filled part by part.
bool yearLeads(const std::vector<Part> &parts)
{
    return parts.size() == 3 && parts.front().length == YearDigits;
}

bool isFull(const std::vector<Part> &parts, std::vector<Part>::const_iterator part)
{
    return yearLeads(parts) && (part == parts.begin() || part->length == OtherDigits);
}

int cursorOf(const QLineEdit &line)
{
    return line.hasSelectedText() ? line.selectionStart() : line.cursorPosition();
}

/// To the line alone: the date edit would take every move of the cursor for the end of a section.
void sendTo(QLineEdit &line, QKeyEvent &key)
{
    static_cast<QObject &>(line).event(&key);
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
    stopTyping();
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

void DatePicker::startTyping()
{
    typing_ = true;
    lineEdit()->blockSignals(true);
}

void DatePicker::stopTyping()
{
    typing_ = false;
    movedOn_ = false;
    lineEdit()->blockSignals(false);
}

/// Ends the typing as well.
bool DatePicker::interpretText()
{
    if (!typing_) {
        return true;
    }
    const QString text = lineEdit()->text();
    const std::vector<Part> parts = partsOf(text);
    const auto part = yearLeads(parts) ? partAt(parts, cursorOf(*lineEdit())) : std::prev(parts.end());
    const auto section = std::min<std::ptrdiff_t>(std::distance(parts.begin(), part), sectionCount() - 1);
    const std::optional<QDate> typed = readDate(text);
    stopTyping();
    setDate(typed.value_or(date()));
    setSelectedSection(sectionAt(yearLeads(parts) ? static_cast<int>(section) : sectionCount() - 1));
    if (!typed) {
        Q_EMIT refused(tr("\"%1\" is no date; %2 stays").arg(text, this->text()));
    }
    return typed.has_value();
}

/// A digit over a full part begins it anew; one that fills its part leads to the next.
void DatePicker::typeDigit(QKeyEvent &key)
{
    QLineEdit &line = *lineEdit();
    const std::vector<Part> before = partsOf(line.text());
    if (const auto part = partAt(before, cursorOf(line)); !line.hasSelectedText() && isFull(before, part)) {
        line.setSelection(part->begin, part->length);
    }
    sendTo(line, key);
    const std::vector<Part> after = partsOf(line.text());
    const auto part = partAt(after, line.cursorPosition());
    const auto next = std::next(part);
    movedOn_ = isFull(after, part) && line.cursorPosition() == part->end() && next != after.end();
    if (movedOn_) {
        line.setSelection(next->begin, next->length);
    }
}

/// A separator leads to the next part. After one or two digits in the place of the year it begins a date of another order.
void DatePicker::typeSeparator(QKeyEvent &key)
{
    if (std::exchange(movedOn_, false)) {
        return;
    }
    QLineEdit &line = *lineEdit();
    const std::vector<Part> parts = partsOf(line.text());
    const auto part = partAt(parts, cursorOf(line));
    const bool otherOrder = part == parts.begin() && part->length < YearDigits;
    if (otherOrder) {
        line.setText(line.text().left(part->end()));
    }
    if (otherOrder || std::next(part) == parts.end()) {
        sendTo(line, key);
    } else {
        line.setSelection(std::next(part)->begin, std::next(part)->length);
    }
}

/// What is typed may be anything on the way to a date of any order.
QValidator::State DatePicker::validate(QString &input, int &pos) const
{
    if (!typing_) {
        return QDateEdit::validate(input, pos);
    }
    const bool possible = std::all_of(input.cbegin(), input.cend(), [](QChar typed) {
        return (typed >= u'0' && typed <= u'9') || typed == u' ' || Separators.contains(typed);
    });
    return possible ? QValidator::Intermediate : QValidator::Invalid;
}

bool DatePicker::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && mayStartAction(static_cast<QKeyEvent &>(*event)) && !interpretText()) {
        // Nothing is started, or saved, with a date that the user did not mean.
        event->accept();
        return true;
    }
    return QDateEdit::event(event);
}

void DatePicker::keyPressEvent(QKeyEvent *event)
{
    const QChar typed = typedCharacter(*event);
    const bool digit = typed >= u'0' && typed <= u'9';
    const bool separator = !typed.isNull() && Separators.contains(typed);
    if (opensCalendar(*event)) {
        openCalendar();
        return;
    }
    if (digit || separator || changesText(*event)) {
        startTyping();
    } else if (endsTyping(*event)) {
        interpretText();
    }
    if (digit) {
        typeDigit(*event);
    } else if (separator) {
        typeSeparator(*event);
    } else if (typing_) {
        movedOn_ = false;
        sendTo(*lineEdit(), *event);
    } else {
        QDateEdit::keyPressEvent(event);
    }
}

void DatePicker::mousePressEvent(QMouseEvent *event)
{
    interpretText();
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) {
        // A farm works on these days too, and red means damage here.
        calendarWidget()->setWeekdayTextFormat(day, QTextCharFormat());
    }
    QDateEdit::mousePressEvent(event);
}

/// The date edit opens its calendar for the mouse alone.
void DatePicker::openCalendar()
{
    QStyleOptionComboBox option;
    option.initFrom(this);
    option.editable = true;
    const QPointF arrow = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this).center();
    QMouseEvent press(QEvent::MouseButtonPress, arrow, mapToGlobal(arrow), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    mousePressEvent(&press);
}

void DatePicker::focusOutEvent(QFocusEvent *event)
{
    if (!interpretText() && event->reason() == Qt::MouseFocusReason) {
        dropNextPress();
    }
    QDateEdit::focusOutEvent(event);
    // The calendar takes the focus for a moment without the field being left.
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        Q_EMIT LostFocus();
    }
}

/// The focus goes first, then the press reaches what was clicked, in the same turn of the event loop.
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
    return QDateEdit::eventFilter(watched, event);
}

bool DatePicker::focusNextPrevChild(bool next)
{
    interpretText();
    return QDateEdit::focusNextPrevChild(next);
}

void DatePicker::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

} // namespace controls
