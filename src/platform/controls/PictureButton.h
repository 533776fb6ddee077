// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QToolButton>

namespace controls
{

/// A menu picture over its caption. The hover border is set from outside, since the menu decides when it goes off.
class PictureButton : public QToolButton
{
    Q_OBJECT
public:
    explicit PictureButton(QWidget *parent = nullptr);

    bool hasHoverBorder() const { return hoverBorder_; }
    void setHoverBorder(bool on);

Q_SIGNALS:
    /// The pointer moved over the picture.
    void MouseMove();

protected:
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    bool hoverBorder_ = false;
};

} // namespace controls
