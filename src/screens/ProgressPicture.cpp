// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/ProgressPicture.h"

#include "platform/controls/Theme.h"

#include <QLabel>
#include <QPainter>

#include <algorithm>

namespace
{

constexpr QSize BoxSize(420, 22);
constexpr int CaptionMargin = 6;
constexpr int Whole = 100;
const QColor BarBlue(0, 0, 255);

} // namespace

ProgressPicture::ProgressPicture(QWidget *parent) : QWidget(parent), LabelP_(new QLabel(this))
{
    setObjectName(QStringLiteral("Picture4"));
    setAccessibleName(QStringLiteral("Progress"));
    setFixedSize(BoxSize);
    LabelP_->setObjectName(QStringLiteral("LabelP"));
    LabelP_->setTextFormat(Qt::PlainText);
    // With its own background, so that it is readable on the bar and outside it.
    LabelP_->setAutoFillBackground(true);
    LabelP_->setBackgroundRole(QPalette::Base);
    LabelP_->setContentsMargins(CaptionMargin, 0, CaptionMargin, 0);
    centreLabel();
}

void ProgressPicture::Cls()
{
    percent_ = 0;
    update();
}

void ProgressPicture::drawBar(int percent)
{
    percent_ = std::clamp(percent, 0, Whole);
    update();
}

int ProgressPicture::barWidth() const
{
    return percent_ * width() / Whole;
}

void ProgressPicture::setCaption(const QString &caption)
{
    LabelP_->setText(caption);
    centreLabel();
}

QString ProgressPicture::caption() const
{
    return LabelP_->text();
}

QSize ProgressPicture::sizeHint() const
{
    return BoxSize;
}

void ProgressPicture::centreLabel()
{
    LabelP_->adjustSize();
    LabelP_->move(width() / 2 - LabelP_->width() / 2, (height() - LabelP_->height()) / 2);
}

void ProgressPicture::resizeEvent(QResizeEvent *)
{
    centreLabel();
}

void ProgressPicture::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const controls::PaletteColours &colours = controls::Theme::colours();
    painter.fillRect(rect(), colours.base);
    painter.fillRect(0, 0, barWidth(), height(), BarBlue);
    painter.setPen(colours.border);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
