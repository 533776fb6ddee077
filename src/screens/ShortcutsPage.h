// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QTextBrowser;

/// The page of all keys: those of the screen that is open first, then those that hold everywhere, then the rest.
class ShortcutsPage : public QDialog
{
    Q_OBJECT
public:
    /// `screen` is the class name of the screen that is open.
    explicit ShortcutsPage(const QString &screen, QWidget *parent = nullptr);

    /// Opens the page without waiting for its end: what is typed into a screen keeps its place behind it.
    static void openOver(QWidget *window, const QString &screen);

    /// What it shows, without markup.
    QString text() const;

private:
    QTextBrowser *browser_;
};
