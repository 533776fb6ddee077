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
#include <QPicture>
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

/// The point of a row that lies nearest to another row.
std::optional<PointPlace> nearest(const std::vector<PointPlace> &points, int row)
{
    const auto found = std::min_element(points.begin(), points.end(), [row](const PointPlace &one, const PointPlace &two) {
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

const Plot &ChartView::plot() const
{
    if (!plot_) {
        plot_ = std::make_unique<Plot>(chart_, chart_.plotColours(), font(), size());
    } else if (plot_->size() != size()) {
        plot_->layOut(size());
    }
    return *plot_;
}

std::optional<PointPlace> ChartView::pointAt(const QPoint &position) const
{
    return plot().pointAt(QPointF(position));
}

std::optional<QPoint> ChartView::positionOf(const PointPlace &place) const
{
    const Mark *mark = plot().markOf(place);
    return mark ? std::optional(mark->anchor.toPoint()) : std::nullopt;
}

std::optional<PointPlace> ChartView::currentPoint() const
{
    const Mark *mark = current_ ? plot().markOf(*current_) : nullptr;
    // In another table, or as a sum, the place no longer means what was chosen.
    return mark && mark->value == currentValue_ ? current_ : std::nullopt;
}

QString ChartView::pointText(const PointPlace &place) const
{
    const Mark *mark = plot().markOf(place);
    if (!mark) {
        return {};
    }
    const QString value = valueText(mark->value);
    const bool slice = shapeKindOf(chart_.series(place.series).SeriesType) == ShapeKind::Pie;
    const QString name = chart_.columnLabelAt(place.series);
    return slice ? QStringLiteral("%1: %2").arg(name, value)
                 : QStringLiteral("%1, %2: %3").arg(name, chart_.rowLabelAt(place.point), value);
}

QRect ChartView::legendRectangle(const QSize &size) const
{
    return paperPlot(*this, size).legendRectangle().toAlignedRect();
}

void ChartView::paintOn(QPainter &painter, const QSize &size) const
{
    // The frame's library paints on devices alone; a recording carries its lines and letters over as they are.
    QPicture recording;
    paperPlot(*this, size).paint(recording, QRectF(QPointF(), size), Plot::Target::Vectors);
    // A replay grows with the resolution of the device; here the painter's own scale says all.
    const QPaintDevice &device = *painter.device();
    painter.save();
    painter.scale(static_cast<double>(recording.logicalDpiX()) / device.logicalDpiX(),
                  static_cast<double>(recording.logicalDpiY()) / device.logicalDpiY());
    painter.drawPicture(0, 0, recording);
    painter.restore();
}

QPixmap ChartView::picture(const QSize &size, qreal pixelRatio) const
{
    QPixmap picture(size * pixelRatio);
    picture.setDevicePixelRatio(pixelRatio);
    paperPlot(*this, size).paint(picture, QRectF(QPointF(), size), Plot::Target::Screen);
    return picture;
}

void ChartView::EditCopy(const QSize &size) const
{
    QGuiApplication::clipboard()->setPixmap(picture(size));
}

void ChartView::paintEvent(QPaintEvent *event)
{
    plot().paint(*this, QRectF(event->rect()), Plot::Target::Screen);
    if (const auto current = currentPoint()) {
        const QPainterPath ring = plot().ringOf(*current);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.strokePath(ring, QPen(chart_.plotColours().background, 5.0));
        painter.strokePath(ring, QPen(chart_.plotColours().text, hasFocus() ? 2.0 : 1.0));
    }
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
    if (const auto place = pointAt(event->position().toPoint()); place && chart_.AllowSelections()) {
        choose(*plot().markOf(*place));
    }
    Q_EMIT Click();
}

void ChartView::keyPressEvent(QKeyEvent *event)
{
    const auto place = chart_.AllowSelections() ? placeAfter(event->key()) : std::nullopt;
    if (!place) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (place != currentPoint()) {
        choose(*plot().markOf(*place));
        Q_EMIT Click();
    }
}

void ChartView::choose(const Mark &chosen)
{
    const PointPlace place = chosen.place;
    current_ = place;
    currentValue_ = chosen.value;
    update();
    QAccessibleEvent told(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&told);
    Q_EMIT PointSelected(place.series, place.point);
}

std::optional<PointPlace> ChartView::placeAfter(int key) const
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
    const std::vector<PointPlace> points = plot().pointsOf(current->series);
    if (key == Qt::Key_Home || key == Qt::Key_End) {
        return key == Qt::Key_Home ? points.front() : points.back();
    }
    const int step = key == Qt::Key_Left || key == Qt::Key_Up ? -1 : 1;
    // Slices have but one point each, so they are walked sideways too.
    if (key == Qt::Key_Up || key == Qt::Key_Down || points.size() == 1) {
        const auto other = neighbourSeries(step);
        return other ? other : current;
    }
    const auto here = std::find(points.begin(), points.end(), *current) - points.begin();
    const auto there = std::clamp<std::ptrdiff_t>(here + step, 0, static_cast<std::ptrdiff_t>(points.size()) - 1);
    return points[static_cast<std::size_t>(there)];
}

std::optional<PointPlace> ChartView::neighbourSeries(int step) const
{
    const PointPlace from = currentPoint().value_or(PointPlace{0, 1});
    for (int series = from.series + step; series >= 1 && series <= chart_.SeriesCount(); series += step) {
        if (const auto place = nearest(plot().pointsOf(series), from.point)) {
            return place;
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
    const auto place = pointAt(position);
    if (!place) {
        QToolTip::hideText();
        return;
    }
    QToolTip::showText(onScreen, pointText(*place), this, QRect(position, QSize()).adjusted(-3, -3, 4, 4));
}

} // namespace chart
