// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStatusBar>

class QLabel;

/// The window's status line: what was stored last and when, or what failed.
class StatusLine : public QStatusBar
{
    Q_OBJECT
public:
    explicit StatusLine(QWidget *parent = nullptr);

    /// `text` after a tick, followed by the time; an empty text clears the line.
    void showWritten(const QString &text);
    /// `text` after a warning sign.
    void showFailure(const QString &text);
    /// `text` alone.
    void showNote(const QString &text);
    void clear();
    QString text() const;

private:
    void show(const QString &icon, const QString &colour, const QString &text);
    void setText(const QString &text);

    QLabel *icon_;
    QLabel *text_;
};
