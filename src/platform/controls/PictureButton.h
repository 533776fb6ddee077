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
    /// A disabled picture is drawn muted and shows `reason` as its tool tip.
    void setUnavailable(const QString &reason);
    void setAvailable();
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The pointer moved over the picture.
    void MouseMove();

protected:
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool hoverBorder_ = false;
};

} // namespace controls
