// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateEdit>

namespace controls
{

/// A date with a calendar. Format yyyy/MM/dd unless set otherwise. A digit typed over a full year, month or day begins it
/// anew. The mouse wheel changes nothing. What is typed is taken when the field is left, and before a key that may start
/// something elsewhere without leaving it: Insert, or any with Alt.
class DatePicker : public QDateEdit
{
    Q_OBJECT
public:
    explicit DatePicker(QWidget *parent = nullptr);

    QDate Value() const { return date(); }
    /// Silent. An invalid date is ignored.
    void setValue(QDate date);

Q_SIGNALS:
    /// The user changed the date, once per finished change of keys, arrows or calendar.
    void Change();
    /// The field was left; not for its own calendar, nor when the whole window is left.
    void LostFocus();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void announce(QDate date);

    QDate announced_;
};

} // namespace controls
