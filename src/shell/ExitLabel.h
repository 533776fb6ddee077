// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>

/// A button drawn as a plain label. Its owner sets the hovered state.
class ExitLabel : public QAbstractButton
{
    Q_OBJECT
public:
    explicit ExitLabel(QWidget *parent = nullptr);

    /// Blue and underlined.
    bool isHovered() const { return hovered_; }
    void setHovered(bool hovered);
    QColor inkColour() const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void MouseMove();

protected:
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool hovered_ = false;
};
