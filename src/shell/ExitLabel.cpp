// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ExitLabel.h"

#include "platform/controls/Theme.h"

#include <QMouseEvent>
#include <QPainter>

namespace
{

constexpr int Margin = 6;
constexpr QRgb BlueOnLight = 0xFF0000FF;
constexpr QRgb BlueOnDark = 0xFF8AB4FF;

} // namespace

ExitLabel::ExitLabel(QWidget *parent) : QAbstractButton(parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

void ExitLabel::setHovered(bool hovered)
{
    if (hovered_ != hovered) {
        hovered_ = hovered;
        update();
    }
}

QColor ExitLabel::inkColour() const
{
    if (!hovered_) {
        return controls::Theme::colours().text;
    }
    return QColor(controls::Theme::isDark() ? BlueOnDark : BlueOnLight);
}

QSize ExitLabel::sizeHint() const
{
    return fontMetrics().size(Qt::TextShowMnemonic, text()) + QSize(2 * Margin, 2 * Margin);
}

void ExitLabel::mouseMoveEvent(QMouseEvent *event)
{
    QAbstractButton::mouseMoveEvent(event);
    event->accept();
    Q_EMIT MouseMove();
}

void ExitLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QFont shown = font();
    shown.setUnderline(hovered_);
    painter.setFont(shown);
    painter.setPen(inkColour());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(controls::Theme::colours().accent, 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
    }
}
