// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Shape.h"

#include <QFont>
#include <QPainter>

namespace chart
{

/// The names of the series with a sample of each, in rows as wide as the plot.
class Legend
{
public:
    Legend(const Chart &chart, const PlotColours &plotColours, const QFont &font);

    /// Places the entries between `wantedLeft` and `right`, or from further left, but right of `topLeft`, where that saves a
    /// line.
    void arrange(const QPointF &topLeft, double wantedLeft, double right);
    /// Bounding rectangle of the entries; empty without any.
    QRectF rectangle() const { return rectangle_; }
    QStringList texts() const;
    void paint(QPainter &painter) const;

private:
    struct Entry {
        QString name;
        QString shown;
        SeriesStyle style;
        ShapeKind kind;
        QRectF rectangle;
    };
    void paintSample(QPainter &painter, const Entry &entry) const;

    QFont font_;
    QColor text_;
    std::vector<Entry> entries_;
    QRectF rectangle_;
};

} // namespace chart
