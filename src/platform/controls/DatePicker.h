// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateEdit>

namespace controls
{

/// A date with a calendar, shown as yyyy/MM/dd.
///
/// Arrows turn the year, month or day at once; the mouse wheel changes nothing. Typed digits go over the year, month or day where
/// the cursor stands and on to the next one, or make up a whole date as readDate() knows them; either is taken when the field is
/// left, and before a key that may start something elsewhere without leaving it: Insert, or any with Alt. A text that is no date
/// gives way to the former date; the key that ended it starts nothing, and a click that did presses no button.
class DatePicker : public QDateEdit
{
    Q_OBJECT
public:
    explicit DatePicker(QWidget *parent = nullptr);

    QDate Value() const { return date(); }
    /// Silent. An invalid date is ignored.
    void setValue(QDate date);
    /// Takes what is typed; in place of the base's own, which knows only its sections. False when it is no date.
    bool interpretText();

Q_SIGNALS:
    /// The user changed the date, once per finished change of keys, arrows or calendar.
    void Change();
    /// The field was left; not for its own calendar, nor when the whole window is left.
    void LostFocus();
    /// What was typed is no date; `why` says so in a sentence for the user.
    void refused(const QString &why);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void wheelEvent(QWheelEvent *event) override;
    QValidator::State validate(QString &input, int &pos) const override;

private:
    void announce(QDate date);
    void dropNextPress();
    void openCalendar();
    void startTyping();
    void stopTyping();
    void typeDigit(QKeyEvent &key);
    void typeSeparator(QKeyEvent &key);

    QDate announced_;
    bool typing_ = false;
    /// The last digit filled its part and the next one is selected; a separator typed now is behind the times.
    bool movedOn_ = false;
};

} // namespace controls
