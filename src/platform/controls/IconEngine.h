// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/IconDrawing.h"

#include <QIconEngine>
#include <QString>

namespace controls
{

/// Draws one line icon in a colour of the palette, sharp at every size and scale. Colours are looked up at each drawing, so the
/// icon follows a change from light to dark.
class IconEngine : public QIconEngine
{
public:
    IconEngine(IconDrawing drawing, QString colourName);

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    QIconEngine *clone() const override;

private:
    QImage image(const QSize &pixels, QIcon::Mode mode, double logicalSize) const;

    IconDrawing drawing_;
    QString colourName_;
};

} // namespace controls
