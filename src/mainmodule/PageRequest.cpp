// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/PageRequest.h"

#include "platform/basic/RunTimeError.h"
#include "platform/basic/TextFiles.h"

#include <QFile>

namespace mainmodule
{

namespace
{

QString fileIn(const QString &appPath)
{
    return basic::pathForWriting(appPath + QStringLiteral("/OpenPage.txt"));
}

} // namespace

PageRequest::PageRequest(const QString &appPath, QObject *parent) : QObject(parent), appPath_(appPath)
{
    // One that was left while no copy ran is out of date.
    QFile::remove(fileIn(appPath_));
    watcher_.addPath(appPath_);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &PageRequest::readRequest);
}

void PageRequest::leave(const QString &appPath, const QString &page)
{
    basic::writeLine(fileIn(appPath), page);
}

void PageRequest::readRequest()
{
    const QString path = fileIn(appPath_);
    if (!QFile::exists(path)) {
        return;
    }
    QString page;
    // An empty line asks for the window alone.
    basic::runOrIgnore([&] { page = basic::readFirstItem(path); });
    QFile::remove(path);
    Q_EMIT requested(page);
}

} // namespace mainmodule
