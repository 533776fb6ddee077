// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <QColor>

/// A box filled with a colour; a click chooses another one.
class ColourBox : public QAbstractButton
{
    Q_OBJECT
public:
    explicit ColourBox(QWidget *parent = nullptr);

    const QColor &BackColor() const { return colour_; }
    /// Silent.
    void setBackColor(const QColor &colour);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor colour_ = Qt::black;
};
