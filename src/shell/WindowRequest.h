// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFileSystemWatcher>
#include <QObject>

class QWidget;

/// The window of a running program, asked for by another program: a one-line file in the program's folder, removed when it is
/// read. The line names a page.
class WindowRequest : public QObject
{
    Q_OBJECT
public:
    enum class Program { Monitoring, MainModule };

    WindowRequest(const QString &appPath, Program program, QObject *parent = nullptr);

    /// Leaves the request for the copy that runs. Error 75 when the file cannot be written.
    static void leave(const QString &appPath, Program program, const QString &page = {});

Q_SIGNALS:
    /// The page's name; empty when the window alone is asked for.
    void requested(const QString &page);

private:
    void readRequest();

    QString path_;
    QFileSystemWatcher watcher_;
};

/// Shows a window before the others, also a minimized one.
void bringToFront(QWidget &window);
