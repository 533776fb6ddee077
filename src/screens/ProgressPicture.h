// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;

/// A box with a caption, LabelP, and a bar that shows the progress of long work.
class ProgressPicture : public QWidget
{
    Q_OBJECT
public:
    explicit ProgressPicture(QWidget *parent = nullptr);

    void Cls();
    /// A filled bar from the top left corner, `percent` of the box's width wide and as high as the box; clamped to 0 to 100.
    void drawBar(int percent);
    /// Current width of the bar in logical pixels.
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
