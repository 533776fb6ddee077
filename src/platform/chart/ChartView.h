// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Chart.h"

#include <QPixmap>
#include <QWidget>

#include <memory>
#include <optional>

namespace chart
{

class Plot;
struct DrawnPoint;

/// Draws a chart and tells which point was chosen. Screen, picture, printer and PDF are drawn on one path.
///
/// The view may be far larger than what is seen of it; it draws only the part that is exposed. On the screen its theme follows
/// the palette, light or dark; what it paints elsewhere is always light.
class ChartView : public QWidget
{
    Q_OBJECT
public:
    explicit ChartView(QWidget *parent = nullptr);
    ~ChartView() override;

    Chart &model() { return chart_; }
    const Chart &model() const { return chart_; }

    /// The point under a place of the view, nothing beside the points. For every kind of chart.
    std::optional<PointIndex> pointAt(const QPoint &position) const;
    /// Where a point is drawn, to scroll it into sight; nothing for an empty cell.
    std::optional<QPoint> positionOf(const PointIndex &index) const;
    /// Nothing before a choice, and nothing once the chosen value is no longer there.
    std::optional<PointIndex> currentPoint() const;
    /// Series, label and value of a point, as tool tip and screen readers tell it; empty for an empty cell.
    QString pointText(const PointIndex &index) const;
    /// Of the legend, in logical pixels of a view of the given size; empty without a legend.
    QRect legendRectangle(const QSize &size) const;

    /// The chart in the light colours as vectors, in logical pixels of `size` from the painter's origin.
    void paintOn(QPainter &painter, const QSize &size) const;
    QPixmap picture(const QSize &size, qreal pixelRatio = 1.0) const;
    /// Puts a picture of the given size on the clipboard.
    void EditCopy(const QSize &size) const;

Q_SIGNALS:
    /// By the mouse or by the keyboard: the arrows go over points and series, Home and End to the first and the last point.
    /// Of a pie the point is always 1. Comes before the Click of the same choice.
    void PointSelected(int series, int point);
    /// After every click of the mouse, and after every choice by the keyboard.
    void Click();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    /// Laid out for the current size; made anew after each change of the chart.
    const Plot &plot() const;
    void followPalette();
    void choose(const DrawnPoint &chosen);
    /// Where a key leads from the current point.
    std::optional<PointIndex> indexAfter(int key) const;
    std::optional<PointIndex> neighbourSeries(int step) const;
    void showPointTip(const QPoint &position, const QPoint &onScreen);

    Chart chart_;
    mutable std::unique_ptr<Plot> plot_;
    std::optional<PointIndex> current_;
    double currentValue_ = 0.0;
};

} // namespace chart
