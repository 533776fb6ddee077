// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/BannerDrawing.h"

#include "platform/controls/Theme.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace
{

constexpr QSizeF DrawnSize(640, 104);

/// A tree with its trunk's foot at `foot`, `height` tall.
void drawTree(QPainter &painter, QPointF foot, double height)
{
    const double crown = height * 0.72;
    const double width = height * 0.56;
    const QPointF top(foot.x(), foot.y() - height);
    QPainterPath path(top);
    path.cubicTo(top + QPointF(width * 0.9, crown * 0.45), top + QPointF(width * 0.6, crown), top + QPointF(0, crown));
    path.cubicTo(top + QPointF(-width * 0.6, crown), top + QPointF(-width * 0.9, crown * 0.45), top);
    painter.drawPath(path);
    painter.drawLine(top + QPointF(0, crown * 0.75), foot);
}

void drawHills(QPainter &painter)
{
    QPainterPath back(QPointF(0, 104));
    back.cubicTo(QPointF(130, 40), QPointF(210, 44), QPointF(320, 62));
    back.cubicTo(QPointF(430, 74), QPointF(520, 62), QPointF(640, 37));
    painter.drawPath(back);
    QPainterPath front(QPointF(120, 104));
    front.cubicTo(QPointF(230, 72), QPointF(330, 74), QPointF(430, 84));
    front.cubicTo(QPointF(510, 90), QPointF(570, 84), QPointF(640, 77));
    painter.drawPath(front);
    for (int furrow = 0; furrow < 5; ++furrow) {
        const double x = 428 + 40.0 * furrow;
        QPainterPath line(QPointF(x, 83 + 0.5 * furrow));
        line.quadTo(QPointF(x - 14 + 3.0 * furrow, 92), QPointF(x - 26 + 6.0 * furrow, 104));
        painter.drawPath(line);
    }
}

} // namespace

BannerDrawing::BannerDrawing(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void BannerDrawing::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor line = controls::Theme::colours().accent;
    line.setAlphaF(0.4F);
    painter.setPen(QPen(line, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const double scale = std::min(1.0, static_cast<double>(height()) / DrawnSize.height());
    painter.translate(width() - DrawnSize.width() * scale, height() - DrawnSize.height() * scale);
    painter.scale(scale, scale);
    drawHills(painter);
    painter.drawEllipse(QPointF(520, 29), 11, 11);
    const std::pair<QPointF, double> trees[] = {
        {{96, 64}, 18},  {{128, 57}, 19}, {{160, 52}, 20}, {{192, 50}, 21}, {{224, 50}, 20},
        {{256, 53}, 20}, {{196, 87}, 25}, {{240, 81}, 27}, {{284, 78}, 27}, {{328, 77}, 26},
    };
    for (const auto &[foot, height] : trees) {
        drawTree(painter, foot, height);
    }
}
