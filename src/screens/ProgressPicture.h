// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;

/// A box with a caption, LabelP, in which a growing bar is drawn while long work lasts.
class ProgressPicture : public QWidget
{
    Q_OBJECT
public:
    explicit ProgressPicture(QWidget *parent = nullptr);

    void Cls();
    /// A filled bar from the top left corner, `percent` of the box's width wide and as high as the box. Beyond 0 to 100 it is
    /// cut at the box.
    void drawBar(int percent);
    /// Logical pixels of the bar now drawn.
    int barWidth() const;

    /// Centred in the box.
    void setCaption(const QString &caption);
    QString caption() const;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void centreLabel();

    QLabel *LabelP_;
    int percent_ = 0;
};
