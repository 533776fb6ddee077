// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <functional>

namespace basic
{

/// Repeats `attempt` until it succeeds, for two seconds at most, where another program that has the file open makes it fail: a
/// virus scanner holds new files for a moment. Other systems try once.
bool retryWhileBusy(const std::function<bool()> &attempt);

/// Opens a file, waiting in the same way. What cannot be opened at all, a read-only file or one in a missing folder, fails at
/// once.
bool openWhenFree(QFile &file, QIODevice::OpenMode mode);

/// Gives `from` the name `to`, replacing a file there in one step. Returns why that failed, else an empty text.
QString replaceFile(const QString &from, const QString &to);

/// Writes a file in one step: a temporary one in the same folder, synced and renamed. Returns why that failed, the file being
/// unchanged, else an empty text.
QString writeWholeFile(const QString &path, const QByteArray &bytes);

/// A new file with a name of its own that only its user can read, removed again unless it is given its final name.
class UnfinishedFile
{
public:
    /// `pattern` has XXXXXX where characters are chosen. Not open afterwards.
    explicit UnfinishedFile(const QString &pattern);
    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile &) = delete;
    UnfinishedFile &operator=(const UnfinishedFile &) = delete;

    /// Empty when it could not be created.
    const QString &path() const { return path_; }
    const QString &errorString() const { return error_; }
    /// False when there is a file of that name, which is never replaced.
    bool rename(const QString &name);

private:
    QString path_;
    QString error_;
};

} // namespace basic
