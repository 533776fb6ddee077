// SPDX-License-Identifier: GPL-3.0-or-later
#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPicture>
#include <QSaveFile>
#include <QSvgRenderer>

#include <array>
#include <cstdio>

// Makes of the SVG icons what the programs contain, so that they need no SVG library:
//   icons drawing ICON.svg ICON.drawing        see platform/controls/IconDrawing
//   icons image ICON.svg COLOUR ICON.png       for the style sheet, with @2x and @3x
//   icons ico ICON.svg ICON.ico                for a program's file on Windows

namespace
{

/// Side of an icon, and of an image of the style sheet, in logical pixels.
constexpr int Side = 24;

QByteArray readIcon(const QString &path, const QString &colour)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().replace("currentColor", colour.toLatin1()) : QByteArray();
}

QPicture pictureOf(const QByteArray &svg)
{
    QPicture picture;
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(svg).render(&painter, QRectF(0, 0, Side, Side));
    return picture;
}

bool writeDrawing(const QString &icon, const QString &target)
{
    QByteArray svg = readIcon(icon, QStringLiteral("#ff0000"));
    svg.replace("#4C9A4E", "#00ff00");
    QByteArray thin = svg;
    thin.replace("stroke-width=\"1.5\"", "stroke-width=\"1\"");
    QSaveFile file(target);
    if (!QSvgRenderer(svg).isValid() || !file.open(QIODevice::WriteOnly)) {
        return false;
    }
    QDataStream stream(&file);
    stream << pictureOf(svg) << pictureOf(thin);
    return stream.status() == QDataStream::Ok && file.commit();
}

bool writeImages(const QString &icon, const QString &colour, const QString &target)
{
    QSvgRenderer renderer(readIcon(icon, colour));
    bool isWritten = renderer.isValid() && target.endsWith(QStringLiteral(".png"));
    for (int scale = 1; scale <= 3; ++scale) {
        QImage image(QSize(Side, Side) * scale, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter);
        painter.end();
        const QString suffix = scale == 1 ? QString() : QStringLiteral("@%1x").arg(scale);
        isWritten = image.save(target.chopped(4) + suffix + QStringLiteral(".png")) && isWritten;
    }
    return isWritten;
}

/// Windows scales what it does not find; 256 is the largest that the format holds.
bool writeIco(const QString &icon, const QString &target)
{
    constexpr std::array<int, 6> Sides{16, 24, 32, 48, 64, 256};
    constexpr quint32 HeaderSize = 6;
    constexpr quint32 EntrySize = 16;
    QSvgRenderer renderer(icon);
    QSaveFile file(target);
    if (!renderer.isValid() || !file.open(QIODevice::WriteOnly)) {
        return false;
    }
    QDataStream stream(&file);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << quint16(0) << quint16(1) << quint16(Sides.size());
    QByteArray images;
    for (const int side : Sides) {
        QImage image(side, side, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter);
        painter.end();
        QBuffer png;
        image.save(&png, "PNG");
        const auto offset = HeaderSize + EntrySize * quint32(Sides.size()) + quint32(images.size());
        // Width and height (0 means 256), colours, reserved, planes, bits of a pixel, length, offset.
        stream << quint8(side) << quint8(side) << quint8(0) << quint8(0) << quint16(1) << quint16(32) << quint32(png.size())
               << offset;
        images += png.data();
    }
    return stream.writeRawData(images.constData(), int(images.size())) == images.size() && file.commit();
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments().mid(1);
    const bool isDrawing = arguments.size() == 3 && arguments.at(0) == QStringLiteral("drawing");
    const bool isImage = arguments.size() == 4 && arguments.at(0) == QStringLiteral("image");
    const bool isIco = arguments.size() == 3 && arguments.at(0) == QStringLiteral("ico");
    const bool isWritten = (isIco && writeIco(arguments.at(1), arguments.at(2)))
        || (isDrawing && writeDrawing(arguments.at(1), arguments.at(2)))
        || (isImage && writeImages(arguments.at(1), arguments.at(2), arguments.at(3)));
    if (!isWritten) {
        std::fprintf(stderr, "icons: nothing was made of %s\n", qPrintable(arguments.join(u' ')));
    }
    return isWritten ? 0 : 1;
}
