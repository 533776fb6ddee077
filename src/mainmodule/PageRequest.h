// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFileSystemWatcher>
#include <QObject>

namespace mainmodule
{

/// A page that another program asks a running main module for: a one-line file in the program's folder, removed when it is read.
class PageRequest : public QObject
{
    Q_OBJECT
public:
    explicit PageRequest(const QString &appPath, QObject *parent = nullptr);

    /// Leaves the request for the copy that runs. Error 75 when the file cannot be written.
    static void leave(const QString &appPath, const QString &page);

Q_SIGNALS:
    /// The page's name; empty when the window alone is asked for.
    void requested(const QString &page);

private:
    void readRequest();

    QString appPath_;
    QFileSystemWatcher watcher_;
};

} // namespace mainmodule
