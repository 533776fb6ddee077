// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <memory>

namespace basic
{

/// An exclusive lock on a file, with the file's text. The lock is one on a byte range far behind the text, which others can read
/// meanwhile. The system releases it when the process ends, also when it is killed; a file server does so when it loses the
/// computer. The locks of SQLite on the same file are independent of it.
class FileLock
{
public:
    /// Creates the file when it is missing. Nothing when another FileLock has it, in this process or another. Error 75 when the
    /// file cannot be opened or its file system has no locks.
    static std::unique_ptr<FileLock> tryLock(const QString &path);
    FileLock(const FileLock &) = delete;
    FileLock &operator=(const FileLock &) = delete;

    QString path() const { return file_.fileName(); }
    QByteArray text();
    /// Replaces the text. The file's time is set by the file system, also when the text is the same. False when writing fails.
    bool setText(const QByteArray &text);

private:
    explicit FileLock(const QString &path) : file_(path) {}

    QFile file_;
};

} // namespace basic
