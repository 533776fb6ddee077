// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/ColourBox.h"

#include "platform/controls/Theme.h"

#include <QPainter>

namespace
{

constexpr QSize BoxSize(72, 32);
constexpr qreal Corner = 4.0;

} // namespace

ColourBox::ColourBox(QWidget *parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setBackColor(colour_);
}

void ColourBox::setBackColor(const QColor &colour)
{
    colour_ = colour;
    setAccessibleDescription(colour.name());
    setToolTip(colour.name());
    update();
}

QSize ColourBox::sizeHint() const
{
    return BoxSize;
}

void ColourBox::paintEvent(QPaintEvent *)
{
    const controls::PaletteColours &colours = controls::Theme::colours();
    const qreal edge = hasFocus() ? 2.0 : 1.0;
    const QColor edgeColour = hasFocus() ? colours.accent : underMouse() ? colours.text : colours.border;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(edgeColour, edge));
    painter.setBrush(colours.base);
    painter.drawRoundedRect(QRectF(rect()).adjusted(edge / 2, edge / 2, -edge / 2, -edge / 2), Corner, Corner);
    painter.fillRect(rect().adjusted(5, 5, -5, -5), colour_);
}
