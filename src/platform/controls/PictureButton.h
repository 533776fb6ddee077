// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QToolButton>

namespace controls
{

/// A menu picture over its caption. The menu sets the hover border.
class PictureButton : public QToolButton
{
    Q_OBJECT
public:
    explicit PictureButton(QWidget *parent = nullptr);

    bool hasHoverBorder() const { return hoverBorder_; }
    void setHoverBorder(bool on);
    /// Draws picture and caption this many pixels above the middle, where there is space.
    void setLift(int pixels);
    /// Lines of the caption that have space below the picture, which is smaller for them if need be.
    void setCaptionLines(int lines);
    /// Disables the picture, drawn muted, with `reason` as its tool tip.
    void setUnavailable(const QString &reason);
    void setAvailable();
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The pointer moved over the picture.
    void MouseMove();

protected:
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool hoverBorder_ = false;
    int lift_ = 0;
    int captionLines_ = 1;
};

} // namespace controls
