// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/Shortcuts.h"

#include <QDialog>

class QTextBrowser;

/// The page of all keys: first those of the open screen, then those that work everywhere, then the others.
class ShortcutsPage : public QDialog
{
    Q_OBJECT
public:
    /// `screen` is the class name of the screen that is open.
    explicit ShortcutsPage(const QString &screen, KeyProgram program = KeyProgram::Monitoring, QWidget *parent = nullptr);

    /// Opens the page and returns at once; input of the screen behind it stays open.
    static void openOver(QWidget *window, const QString &screen, KeyProgram program = KeyProgram::Monitoring);

    /// What it shows, without markup.
    QString text() const;

private:
    void fitInto(const QWidget &window);

    QTextBrowser *browser_;
};
