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
constexpr int LargestPicture = 80;
constexpr int CaptionGap = 12;
constexpr int CaptionMargin = 6;
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

void PictureButton::setLift(int pixels)
{
    lift_ = pixels;
    update();
}

void PictureButton::setCaptionLines(int lines)
{
    captionLines_ = lines;
    update();
}

QSize PictureButton::sizeHint() const
{
    const QFontMetrics metrics(font());
    const int width = std::max(PictureSize, metrics.size(Qt::TextShowMnemonic, text()).width());
    return {width + 40, PictureSize + CaptionGap + metrics.height() + 40};
}

/// With the caption on two lines.
QSize PictureButton::minimumSizeHint() const
{
    const QFontMetrics metrics(font());
    const QString caption = QString(text()).remove(u'&');
    int width = metrics.horizontalAdvance(caption);
    for (qsizetype space = caption.indexOf(u' '); space >= 0; space = caption.indexOf(u' ', space + 1)) {
        width = std::min(
            width, std::max(metrics.horizontalAdvance(caption.left(space)), metrics.horizontalAdvance(caption.mid(space + 1))));
    }
    return {std::max(PictureSize, width) + 2 * CaptionMargin, PictureSize + CaptionGap + metrics.height()};
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
    const int line = fontMetrics().height();
    const int below = CaptionGap + captionLines_ * line;
    const int wanted = std::clamp(height() / 4, PictureSize, LargestPicture);
    const int size = std::min(wanted, height() - below);
    const int top = std::clamp((height() - wanted - CaptionGap - line) / 2 - lift_, 0, height() - size - below);
    const QRect picture((width() - size) / 2, top, size, size);
    icon().paint(&painter, picture, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    painter.setPen(isEnabled() ? colours.text : colours.disabled);
    painter.drawText(QRect(CaptionMargin, picture.bottom() + CaptionGap, width() - 2 * CaptionMargin, 2 * line),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap | Qt::TextShowMnemonic, text());
}

} // namespace controls
