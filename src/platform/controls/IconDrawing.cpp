// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/IconDrawing.h"

#include "platform/basic/RunTimeError.h"

#include <QDataStream>
#include <QFile>
#include <QPainter>

#include <algorithm>

namespace controls
{

namespace
{

/// Side of the recorded drawing.
constexpr double Side = 24;

/// Blending is linear, so the parts of red and green in a premultiplied pixel are the shares of the two colours.
void colourIn(QImage &image, const QColor &colour, const QColor &fill)
{
    const auto mixed = [](int red, int one, int green, int other) { return (red * one + green * other + 127) / 255; };
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        std::transform(line, line + image.width(), line, [&](QRgb pixel) {
            const int red = qRed(pixel);
            const int green = qGreen(pixel);
            return qRgba(mixed(red, colour.red(), green, fill.red()), mixed(red, colour.green(), green, fill.green()),
                         mixed(red, colour.blue(), green, fill.blue()), qAlpha(pixel));
        });
    }
}

} // namespace

IconDrawing::IconDrawing(const QString &name)
{
    QFile file(QStringLiteral(":/farm/icons/%1.drawing").arg(name));
    if (!file.open(QIODevice::ReadOnly)) {
        throw basic::RunTimeError(basic::ErrorNumber::FileNotFound, QStringLiteral("%1 is not built in.").arg(file.fileName()));
    }
    QDataStream stream(&file);
    stream >> normal_ >> thin_;
}

QImage IconDrawing::image(const QSize &pixels, const QColor &colour, const QColor &fill, bool thin) const
{
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(pixels.width() / Side, pixels.height() / Side);
    painter.drawPicture(QPointF(), thin ? thin_ : normal_);
    painter.end();
    colourIn(image, colour, fill);
    return image;
}

} // namespace controls
