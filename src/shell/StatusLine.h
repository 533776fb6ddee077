// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStatusBar>

class QLabel;

/// The line at the foot of the window: what was written last and when, or what failed.
class StatusLine : public QStatusBar
{
    Q_OBJECT
public:
    explicit StatusLine(QWidget *parent = nullptr);

    /// `text` with a tick before it and the time after it.
    void showWritten(const QString &text);
    /// `text` with a warning sign; several at start are joined by the caller.
    void showFailure(const QString &text);
    QString text() const;

private:
    void show(const QString &icon, const QString &colour, const QString &text);

    QLabel *icon_;
    QLabel *text_;
};
