// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/WindowRequest.h"

#include "platform/basic/RunTimeError.h"
#include "platform/basic/TextFiles.h"

#include <QFile>
#include <QWidget>

namespace
{

QString fileIn(const QString &appPath, WindowRequest::Program program)
{
    const bool isMonitoring = program == WindowRequest::Program::Monitoring;
    const QString name = isMonitoring ? QStringLiteral("/ShowMonitoring.txt") : QStringLiteral("/OpenPage.txt");
    return basic::pathForWriting(appPath + name);
}

} // namespace

WindowRequest::WindowRequest(const QString &appPath, Program program, QObject *parent)
    : QObject(parent), path_(fileIn(appPath, program))
{
    // One that was left while no copy ran is out of date.
    QFile::remove(path_);
    watcher_.addPath(appPath);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &WindowRequest::readRequest);
}

void WindowRequest::leave(const QString &appPath, Program program, const QString &page)
{
    basic::writeLine(fileIn(appPath, program), page);
}

void WindowRequest::readRequest()
{
    if (!QFile::exists(path_)) {
        return;
    }
    QString page;
    // An empty line asks for the window alone.
    basic::runOrIgnore([&] { page = basic::readFirstItem(path_); });
    QFile::remove(path_);
    Q_EMIT requested(page);
}

void bringToFront(QWidget &window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}
