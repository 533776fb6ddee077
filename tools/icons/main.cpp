// SPDX-License-Identifier: GPL-3.0-or-later
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPicture>
#include <QSaveFile>
#include <QSvgRenderer>

#include <cstdio>

// Makes of the SVG icons what the programs contain, so that they need no SVG library:
//   icons drawing ICON.svg ICON.drawing        see platform/controls/IconDrawing
//   icons image ICON.svg COLOUR ICON.png       for the style sheet, with @2x and @3x

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

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments().mid(1);
    const bool isDrawing = arguments.size() == 3 && arguments.at(0) == QStringLiteral("drawing");
    const bool isImage = arguments.size() == 4 && arguments.at(0) == QStringLiteral("image");
    const bool isWritten = (isDrawing && writeDrawing(arguments.at(1), arguments.at(2)))
        || (isImage && writeImages(arguments.at(1), arguments.at(2), arguments.at(3)));
    if (!isWritten) {
        std::fprintf(stderr, "icons: nothing was made of %s\n", qPrintable(arguments.join(u' ')));
    }
    return isWritten ? 0 : 1;
}
