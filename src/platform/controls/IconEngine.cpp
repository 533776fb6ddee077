// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/IconEngine.h"

#include "platform/controls/Theme.h"

#include <QPainter>

#include <algorithm>

namespace controls
{

namespace
{

/// From this size on icons are drawn with a thin line, or they would look heavy next to their caption.
constexpr double ThinLineSize = 40;

/// The only fill colour of the icons.
constexpr QRgb LeafGreen = 0xFF4C9A4E;

} // namespace

IconEngine::IconEngine(IconDrawing drawing, QString colourName) : drawing_(std::move(drawing)), colourName_(std::move(colourName))
{
}

QImage IconEngine::image(const QSize &pixels, QIcon::Mode mode, double logicalSize) const
{
    const bool isDisabled = mode == QIcon::Disabled;
    return drawing_.image(pixels, Theme::colour(isDisabled ? QStringLiteral("disabled") : colourName_),
                          isDisabled ? Theme::colours().line : QColor(LeafGreen), logicalSize >= ThinLineSize);
}

void IconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State)
{
    const int side = std::min(rect.width(), rect.height());
    const QPointF corner = QRectF(rect).center() - QPointF(side / 2.0, side / 2.0);
    const int pixels = qRound(side * painter->device()->devicePixelRatio());
    painter->drawImage(QRectF(corner, QSizeF(side, side)), image(QSize(pixels, pixels), mode, rect.width()));
}

QPixmap IconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    return scaledPixmap(size, mode, state, 1);
}

QPixmap IconEngine::scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State, qreal scale)
{
    return QPixmap::fromImage(image(size, mode, size.width() / scale));
}

QIconEngine *IconEngine::clone() const
{
    return new IconEngine(*this);
}

} // namespace controls
