// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Chart.h"

#include <QPixmap>
#include <QWidget>

#include <memory>
#include <optional>

namespace chart
{

/// A point of a series, both counted from 1.
struct PointPlace {
    int series = 0;
    int point = 0;
    friend bool operator==(const PointPlace &, const PointPlace &) = default;
};

/// Draws a chart and tells which point was chosen. Screen, picture, printer and PDF are drawn on one path.
///
/// The view may be far larger than what is seen of it; it draws and keeps only the part that is exposed.
class ChartView : public QWidget
{
    Q_OBJECT
public:
    explicit ChartView(QWidget *parent = nullptr);
    ~ChartView() override;

    Chart &model() { return chart_; }
    const Chart &model() const { return chart_; }

    /// The point under a place of the view, nothing beside the points. For every kind of chart.
    std::optional<PointPlace> pointAt(const QPoint &position) const;
    /// Where a point is drawn; nothing for an empty cell.
    std::optional<QPoint> positionOf(const PointPlace &place) const;
    /// Of the legend, in logical pixels of a view of the given size; empty without a legend.
    QRect legendRectangle(const QSize &size) const;

    /// The chart in the light colours as vectors, in logical pixels of `size` from the painter's origin.
    void paintOn(QPainter &painter, const QSize &size) const;
    QPixmap picture(const QSize &size, qreal pixelRatio = 1.0) const;
    /// Puts a picture of the given size on the clipboard.
    void EditCopy(const QSize &size) const;

Q_SIGNALS:
    /// By the mouse or by the keyboard's arrows; of the mouse before Click.
    void PointSelected(int series, int point);
    void Click();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    class Private;
    Chart chart_;
    std::unique_ptr<Private> private_;
};

} // namespace chart
