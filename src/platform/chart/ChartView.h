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

/// Draws a chart and reports which point was selected. Screen, image, printer and PDF share one drawing path.
///
/// The view may be far larger than what is seen of it; it draws only the part that is exposed. On the screen its colours follow
/// the palette, light or dark; what it paints elsewhere is always light.
class ChartView : public QWidget
{
    Q_OBJECT
public:
    explicit ChartView(QWidget *parent = nullptr);
    ~ChartView() override;

    Chart &model() { return chart_; }
    const Chart &model() const { return chart_; }

    /// The point at a position of the view, for every chart type; nothing between the points.
    std::optional<PointIndex> pointAt(const QPoint &position) const;
    /// Where a point is drawn, for scrolling it into view; nothing for an empty cell.
    std::optional<QPoint> positionOf(const PointIndex &index) const;
    /// The selected point; nothing once its value is no longer in the table.
    std::optional<PointIndex> currentPoint() const;
    /// Series, label and value of a point, as shown in the tool tip and read by screen readers; empty for an empty cell.
    QString pointText(const PointIndex &index) const;
    /// Shown while nothing is drawn.
    void setEmptyText(const QString &text);
    /// Of the legend, in logical pixels of a view of the given size; empty without a legend.
    QRect legendRectangle(const QSize &size) const;

    /// The chart in the colours for paper, in logical pixels of `size` from the painter's origin.
    void paintOn(QPainter &painter, const QSize &size) const;
    QPixmap picture(const QSize &size, qreal pixelRatio = 1.0) const;
    /// Copies an image of the given size to the clipboard.
    void EditCopy(const QSize &size) const;

Q_SIGNALS:
    /// By mouse or keyboard: the arrow keys move over points and series, Home and End to the first and last point.
    /// In a pie the point is always 1. Emitted before the Click of the same selection.
    void PointSelected(int series, int point);
    /// After every mouse click and after every selection by keyboard.
    void Click();
    /// After Ctrl+C has copied the table as text.
    void TableCopied();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    bool event(QEvent *event) override;

private:
    int legendWidth() const;
    /// Laid out for the current size; recreated after each change of the chart.
    const Plot &plot() const;
    void followPalette();
    void choose(const DrawnPoint &chosen);
    /// The point that a key leads to.
    std::optional<PointIndex> indexAfter(int key) const;
    std::optional<PointIndex> neighbourSeries(int step) const;
    void showPointTip(const QPoint &position, const QPoint &onScreen);

    Chart chart_;
    mutable std::unique_ptr<Plot> plot_;
    QString emptyText_;
    std::optional<PointIndex> current_;
    double currentValue_ = 0.0;
};

} // namespace chart
