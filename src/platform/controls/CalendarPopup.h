// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCalendarWidget>

namespace controls
{

/// A calendar that opens below a field and closes with the chosen day. Today has a ring.
class CalendarPopup : public QCalendarWidget
{
    Q_OBJECT
public:
    explicit CalendarPopup(QWidget *parent);

    /// Opens within the field's screen, on the month of `date`.
    void openAt(const QWidget &field, QDate date);

Q_SIGNALS:
    void chosen(QDate date);

protected:
    void paintCell(QPainter *painter, const QRect &rect, QDate date) const override;

private:
    void finish(QDate date);
};

} // namespace controls
