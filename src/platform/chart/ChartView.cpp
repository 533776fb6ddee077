// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/ChartView.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QPainter>

namespace chart
{

class ChartView::Private
{
};

ChartView::ChartView(QWidget *parent) : QWidget(parent), private_(std::make_unique<Private>()) {}
ChartView::~ChartView() = default;

std::optional<PointPlace> ChartView::pointAt(const QPoint &) const
{
    return std::nullopt;
}
std::optional<QPoint> ChartView::positionOf(const PointPlace &) const
{
    return std::nullopt;
}
QRect ChartView::legendRectangle(const QSize &) const
{
    return {};
}
void ChartView::paintOn(QPainter &painter, const QSize &size) const
{
    painter.fillRect(QRect(QPoint(), size), Theme::light().background);
}
QPixmap ChartView::picture(const QSize &size, qreal pixelRatio) const
{
    QPixmap picture(size * pixelRatio);
    picture.setDevicePixelRatio(pixelRatio);
    QPainter painter(&picture);
    paintOn(painter, size);
    return picture;
}
void ChartView::EditCopy(const QSize &size) const
{
    QGuiApplication::clipboard()->setPixmap(picture(size));
}
void ChartView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), chart_.theme().background);
}
void ChartView::mousePressEvent(QMouseEvent *event)
{
    QWidget::mousePressEvent(event);
}
void ChartView::mouseReleaseEvent(QMouseEvent *)
{
    Q_EMIT Click();
}
void ChartView::keyPressEvent(QKeyEvent *event)
{
    QWidget::keyPressEvent(event);
}
bool ChartView::event(QEvent *event)
{
    return QWidget::event(event);
}

} // namespace chart
