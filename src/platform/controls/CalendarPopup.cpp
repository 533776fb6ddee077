// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/CalendarPopup.h"

#include "platform/basic/Clock.h"
#include "platform/controls/Theme.h"

#include <QPainter>
#include <QScreen>
#include <QTextCharFormat>
#include <QToolButton>

#include <algorithm>

namespace controls
{

CalendarPopup::CalendarPopup(QWidget *parent) : QCalendarWidget(parent)
{
    setWindowFlag(Qt::Popup);
    // Qt would show ISO weeks, which are not the weeks of the instructions.
    setVerticalHeaderFormat(NoVerticalHeader);
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) {
        // A farm works on these days too, and red means damage here.
        setWeekdayTextFormat(day, QTextCharFormat());
    }
    for (const auto &[button, icon] :
         {std::pair("qt_calendar_prevmonth", "chevron-left"), std::pair("qt_calendar_nextmonth", "chevron-right")}) {
        findChild<QToolButton *>(QLatin1String(button))->setIcon(Theme::icon(QLatin1String(icon)));
    }
    connect(this, &QCalendarWidget::clicked, this, &CalendarPopup::finish);
    connect(this, &QCalendarWidget::activated, this, &CalendarPopup::finish);
}

void CalendarPopup::openAt(const QWidget &field, QDate date)
{
    setSelectedDate(date);
    showSelectedDate();
    adjustSize();
    const QRect screen = field.screen()->availableGeometry();
    QPoint corner = field.mapToGlobal(QPoint(0, field.height()));
    if (corner.y() + height() > screen.bottom()) {
        corner.setY(field.mapToGlobal(QPoint()).y() - height());
    }
    corner.setX(std::clamp(corner.x(), screen.left(), std::max(screen.left(), screen.right() - width())));
    move(corner);
    show();
    setFocus(Qt::PopupFocusReason);
}

void CalendarPopup::finish(QDate date)
{
    close();
    Q_EMIT chosen(date);
}

void CalendarPopup::paintCell(QPainter *painter, const QRect &rect, QDate date) const
{
    QCalendarWidget::paintCell(painter, rect, date);
    if (date == basic::Clock::today()) {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(date == selectedDate() ? Theme::colours().onAccent : Theme::colours().accent, 1.5));
        painter->drawRoundedRect(QRectF(rect).adjusted(2, 2, -2, -2), 4, 4);
        painter->restore();
    }
}

} // namespace controls
