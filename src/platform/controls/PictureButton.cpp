// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/PictureButton.h"

#include "platform/controls/Theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace controls
{

namespace
{

constexpr int PictureSize = 56;
constexpr int CaptionGap = 12;
constexpr int BorderRadius = 6;

} // namespace

PictureButton::PictureButton(QWidget *parent) : QToolButton(parent)
{
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setIconSize({PictureSize, PictureSize});
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setCursor(Qt::PointingHandCursor);
}

void PictureButton::setHoverBorder(bool on)
{
    if (hoverBorder_ != on) {
        hoverBorder_ = on;
        update();
    }
}

void PictureButton::setUnavailable(const QString &reason)
{
    setEnabled(false);
    setToolTip(reason);
    setAccessibleDescription(reason);
    unsetCursor();
}

void PictureButton::setAvailable()
{
    setUnavailable({});
    setEnabled(true);
    setCursor(Qt::PointingHandCursor);
}

QSize PictureButton::sizeHint() const
{
    const QFontMetrics metrics(font());
    const int width = std::max(PictureSize, metrics.size(Qt::TextShowMnemonic, text()).width());
    return {width + 40, PictureSize + CaptionGap + metrics.height() + 40};
}

QSize PictureButton::minimumSizeHint() const
{
    constexpr int padding = 40;
    return sizeHint() - QSize(padding, padding);
}

void PictureButton::mouseMoveEvent(QMouseEvent *event)
{
    QToolButton::mouseMoveEvent(event);
    // Ignored, the event would reach the widget below, which removes the border.
    event->accept();
    Q_EMIT MouseMove();
}

void PictureButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->accept();
        click();
        return;
    }
    QToolButton::keyPressEvent(event);
}

void PictureButton::paintEvent(QPaintEvent *)
{
    const PaletteColours &colours = Theme::colours();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double pen = hasFocus() ? 2 : 1;
    if (hoverBorder_ || hasFocus() || isDown()) {
        painter.setPen(QPen(hasFocus() ? colours.accent : colours.border, pen));
        painter.setBrush(isDown() ? colours.line : hoverBorder_ ? colours.window : QColor(Qt::transparent));
        painter.drawRoundedRect(QRectF(rect()).adjusted(pen / 2, pen / 2, -pen / 2, -pen / 2), BorderRadius, BorderRadius);
    }
    const int caption = fontMetrics().height();
    const int top = (height() - PictureSize - CaptionGap - caption) / 2;
    const QRect picture((width() - PictureSize) / 2, top, PictureSize, PictureSize);
    icon().paint(&painter, picture, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    painter.setPen(isEnabled() ? colours.text : colours.disabled);
    painter.drawText(QRect(0, picture.bottom() + CaptionGap, width(), caption), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

} // namespace controls
