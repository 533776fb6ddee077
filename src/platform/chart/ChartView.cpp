// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/ChartView.h"

#include "platform/chart/ChartAccessible.h"
#include "platform/chart/Plot.h"
#include "platform/chart/ValueScale.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cstdlib>

namespace chart
{

namespace
{

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Base).lightness() < 128;
}

Plot paperPlot(const ChartView &view, const QSize &size)
{
    return {view.model(), PlotColours::light(), view.font(), size};
}

/// The point whose row is nearest to `row`.
std::optional<PointIndex> nearest(const std::vector<PointIndex> &points, int row)
{
    const auto found = std::min_element(points.begin(), points.end(), [row](const PointIndex &one, const PointIndex &two) {
        return std::abs(one.point - row) < std::abs(two.point - row);
    });
    return found == points.end() ? std::nullopt : std::optional(*found);
}

} // namespace

ChartView::ChartView(QWidget *parent) : QWidget(parent)
{
    installChartAccessibility();
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&chart_, &Chart::changed, this, [this] {
        plot_.reset();
        update();
    });
    followPalette();
}

ChartView::~ChartView() = default;

void ChartView::followPalette()
{
    chart_.setPlotColours(isDark(palette()) ? PlotColours::dark() : PlotColours::light());
}

int ChartView::legendWidth() const
{
    return parentWidget() ? std::min(width(), parentWidget()->width()) : width();
}

const Plot &ChartView::plot() const
{
    if (!plot_) {
        plot_ = std::make_unique<Plot>(chart_, chart_.plotColours(), font(), size(), legendWidth());
    } else if (plot_->size() != size()) {
        plot_->layOut(size(), legendWidth());
    }
    return *plot_;
}

std::optional<PointIndex> ChartView::pointAt(const QPoint &position) const
{
    return plot().pointAt(QPointF(position), QRectF(visibleRegion().boundingRect()));
}

std::optional<QPoint> ChartView::positionOf(const PointIndex &index) const
{
    const DrawnPoint *point = plot().drawnPoint(index);
    return point ? std::optional(point->anchor.toPoint()) : std::nullopt;
}

std::optional<PointIndex> ChartView::currentPoint() const
{
    const DrawnPoint *point = current_ ? plot().drawnPoint(*current_) : nullptr;
    // In another table, or as a sum, the index no longer means what was chosen.
    return point && point->value == currentValue_ ? current_ : std::nullopt;
}

QString ChartView::pointText(const PointIndex &index) const
{
    const DrawnPoint *point = plot().drawnPoint(index);
    if (!point) {
        return {};
    }
    const QString value = valueText(point->value);
    const bool slice = shapeKindOf(chart_.series(index.series).SeriesType) == ShapeKind::Pie;
    const QString name = chart_.columnLabelAt(index.series);
    const QString noun = chart_.rowNoun().isEmpty() ? QString() : chart_.rowNoun() + u' ';
    return slice ? QStringLiteral("%1: %2").arg(name, value)
                 : QStringLiteral("%1, %2%3: %4").arg(name, noun, chart_.rowLabelAt(index.point), value);
}

void ChartView::setEmptyText(const QString &text)
{
    emptyText_ = text;
    update();
}

QRect ChartView::legendRectangle(const QSize &size) const
{
    return paperPlot(*this, size).legendRectangle().toAlignedRect();
}

void ChartView::paintOn(QPainter &painter, const QSize &size) const
{
    Plot(chart_, PlotColours::paper(), font(), size).paint(painter, QRectF(QPointF(), size));
}

QPixmap ChartView::picture(const QSize &size, qreal pixelRatio) const
{
    QPixmap picture(size * pixelRatio);
    picture.setDevicePixelRatio(pixelRatio);
    QPainter painter(&picture);
    paperPlot(*this, size).paint(painter, QRectF(QPointF(), size));
    return picture;
}

void ChartView::EditCopy(const QSize &size) const
{
    QGuiApplication::clipboard()->setPixmap(picture(size));
}

void ChartView::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    // A chart larger than its viewport shows legend and axes at the edges of the visible part.
    plot().paint(painter, QRectF(event->rect()), QRectF(visibleRegion().boundingRect()));
    if (chart_.RowCount() == 0) {
        painter.setPen(chart_.plotColours().muted);
        painter.drawText(rect(), static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap, emptyText_);
    }
    if (const auto current = currentPoint()) {
        const QPainterPath ring = plot().ringOf(*current);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.strokePath(ring, QPen(chart_.plotColours().background, 5.0));
        painter.strokePath(ring, QPen(chart_.plotColours().text, hasFocus() ? 2.0 : 1.0));
    }
}

void ChartView::moveEvent(QMoveEvent *event)
{
    QWidget::moveEvent(event);
    update(); // legend and axes stay in place while the rest moves
}

void ChartView::mousePressEvent(QMouseEvent *event)
{
    event->setAccepted(event->button() == Qt::LeftButton);
}

void ChartView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !rect().contains(event->position().toPoint())) {
        return;
    }
    if (const auto index = pointAt(event->position().toPoint()); index && chart_.AllowSelections()) {
        choose(*plot().drawnPoint(*index));
    }
    Q_EMIT Click();
}

void ChartView::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy) && chart_.RowCount() > 0) {
        QGuiApplication::clipboard()->setText(chart_.tableText());
        Q_EMIT TableCopied();
        return;
    }
    const auto index = chart_.AllowSelections() ? indexAfter(event->key()) : std::nullopt;
    if (!index) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (index != currentPoint()) {
        choose(*plot().drawnPoint(*index));
        Q_EMIT Click();
    }
}

void ChartView::choose(const DrawnPoint &chosen)
{
    const PointIndex index = chosen.index;
    current_ = index;
    currentValue_ = chosen.value;
    update();
    QAccessibleEvent changed(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&changed);
    Q_EMIT PointSelected(index.series, index.point);
}

std::optional<PointIndex> ChartView::indexAfter(int key) const
{
    const bool known = key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down
        || key == Qt::Key_Home || key == Qt::Key_End;
    const auto current = currentPoint();
    if (!known) {
        return std::nullopt;
    }
    if (!current) {
        return neighbourSeries(1);
    }
    const std::vector<PointIndex> points = plot().pointsOf(current->series);
    if (key == Qt::Key_Home || key == Qt::Key_End) {
        return key == Qt::Key_Home ? points.front() : points.back();
    }
    const int step = key == Qt::Key_Left || key == Qt::Key_Up ? -1 : 1;
    // A slice has a single point, so Left and Right change the series.
    if (key == Qt::Key_Up || key == Qt::Key_Down || points.size() == 1) {
        const auto other = neighbourSeries(step);
        return other ? other : current;
    }
    const auto here = std::find(points.begin(), points.end(), *current) - points.begin();
    const auto there = std::clamp<std::ptrdiff_t>(here + step, 0, static_cast<std::ptrdiff_t>(points.size()) - 1);
    return points[static_cast<std::size_t>(there)];
}

std::optional<PointIndex> ChartView::neighbourSeries(int step) const
{
    const PointIndex from = currentPoint().value_or(PointIndex{0, 1});
    for (int series = from.series + step; series >= 1 && series <= chart_.SeriesCount(); series += step) {
        if (const auto index = nearest(plot().pointsOf(series), from.point)) {
            return index;
        }
    }
    return std::nullopt;
}

bool ChartView::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::PaletteChange:
        followPalette();
        break;
    case QEvent::FontChange:
        chart_.Refresh();
        break;
    case QEvent::ToolTip: {
        const auto &help = static_cast<const QHelpEvent &>(*event);
        showPointTip(help.pos(), help.globalPos());
        return true;
    }
    default:
        break;
    }
    return QWidget::event(event);
}

void ChartView::showPointTip(const QPoint &position, const QPoint &onScreen)
{
    const auto index = pointAt(position);
    if (!index) {
        QToolTip::hideText();
        return;
    }
    QToolTip::showText(onScreen, pointText(*index), this, QRect(position, QSize()).adjusted(-3, -3, 4, 4));
}

} // namespace chart
