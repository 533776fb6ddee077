// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

/// The line drawing of rows of trees on the menu's banner; only decoration.
class BannerDrawing : public QWidget
{
    Q_OBJECT
public:
    explicit BannerDrawing(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
