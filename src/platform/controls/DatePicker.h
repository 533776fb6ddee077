// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QLineEdit>

namespace controls
{

class CalendarPopup;

/// A date shown as yyyy/MM/dd in every locale, with a calendar behind the icon.
///
/// A date can be typed as yyyy/MM/dd, dd/MM/yyyy or yyyyMMdd, also with dashes or points. It is taken by Enter, when the field is
/// left, and before a key that may act while the focus stays here: Insert, or any with Alt. Other text is refused: the former
/// date returns, and the key or click that ended the typing starts nothing. Up and Down change the year, month or day at the
/// cursor, or the day when all is selected.
class DatePicker : public QLineEdit
{
    Q_OBJECT
public:
    explicit DatePicker(QWidget *parent = nullptr);

    QDate Value() const { return value_; }
    /// Silent. An invalid date is ignored.
    void setValue(QDate date);
    /// Sets the date as the user does: raises Change when it differs.
    void choose(QDate date);
    /// Takes what was typed. False when it is not a date; refused() was raised then.
    bool acceptText();

Q_SIGNALS:
    /// The user changed the date; once per finished input.
    void Change();
    /// The field was left; not for its own calendar, nor for another window.
    void LostFocus();
    /// The typed text is not a date; `why` is a sentence for the user.
    void refused(const QString &why);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    /// A stretch of digits in the text.
    struct Part {
        int begin;
        int length;
    };
    Part partAt(int position) const;
    void step(int steps);
    void openCalendar();
    void dropNextPress();

    QDate value_;
    QAction *opensCalendar_;
    CalendarPopup *calendar_ = nullptr;
};

} // namespace controls
