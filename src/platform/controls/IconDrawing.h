// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QPicture>

namespace controls
{

/// One icon as the build recorded it from its SVG file (tools/icons), in two widths of its lines. Red there is the colour that
/// the icon is given, green its own fill.
class IconDrawing
{
public:
    /// Error 53 for an unknown icon.
    explicit IconDrawing(const QString &name);

    /// `thin` is for large icons, which would look heavy next to their caption.
    QImage image(const QSize &pixels, const QColor &colour, const QColor &fill, bool thin) const;

private:
    QPicture normal_;
    QPicture thin_;
};

} // namespace controls
