// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/IconEngine.h"

#include "platform/controls/Theme.h"

#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>

namespace controls
{

namespace
{

/// From this size on icons are drawn with a thin line, or they would look heavy next to their caption.
constexpr double ThinLineSize = 40;

/// The only fill colour of the icons.
const QString LeafGreen = QStringLiteral("#4C9A4E");

} // namespace

IconEngine::IconEngine(QString svg, QString colourName) : svg_(std::move(svg)), colourName_(std::move(colourName)) {}

QByteArray IconEngine::tinted(QIcon::Mode mode, double logicalSize) const
{
    const QColor colour = Theme::colour(mode == QIcon::Disabled ? QStringLiteral("disabled") : colourName_);
    QString text = svg_;
    text.replace(QStringLiteral("currentColor"), colour.name());
    if (mode == QIcon::Disabled) {
        text.replace(LeafGreen, Theme::colours().line.name());
    }
    if (logicalSize >= ThinLineSize) {
        text.replace(QStringLiteral("stroke-width=\"1.5\""), QStringLiteral("stroke-width=\"1\""));
    }
    return text.toUtf8();
}

void IconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State)
{
    QSvgRenderer renderer(tinted(mode, rect.width()));
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const int side = std::min(rect.width(), rect.height());
    const QPointF corner = QRectF(rect).center() - QPointF(side / 2.0, side / 2.0);
    renderer.render(painter, QRectF(corner, QSizeF(side, side)));
    painter->restore();
}

QPixmap IconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    return scaledPixmap(size, mode, state, 1);
}

QPixmap IconEngine::scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State, qreal scale)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(tinted(mode, size.width() / scale)).render(&painter, QRectF(QPointF(), QSizeF(size)));
    return pixmap;
}

QIconEngine *IconEngine::clone() const
{
    return new IconEngine(*this);
}

} // namespace controls
