// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace basic
{
class FileLock;
}

/// The computer, user and process that has a farm open, as the lock file names it.
struct FarmHolder {
    QString computer;
    QString user;
    QDateTime since;
    qint64 process = 0;
    bool isThisComputer = false;

    /// "anna on OFFICE-2 since 2026/05/01 08:00".
    QString text() const;
};

/// The right to change a farm: the file PestMon.lock in its Databases folder, which names the holder. One writer at a time, since
/// totals are kept by difference and a screen does not see what another program has written since it was opened.
///
/// Two signs tell whether the holder is alive. A lock of the file system is released when the holder dies, at once on the same
/// computer and after a minute or so by a file server. Some shares do not carry locks to the server, so the holder also rewrites
/// the file every minute; a program on another computer takes it over only when it is older than three minutes by the clock of
/// the file server.
class FarmLock
{
public:
    using Milliseconds = std::chrono::milliseconds;
    static constexpr Milliseconds Heartbeat = std::chrono::minutes(1);
    static constexpr Milliseconds Stale = std::chrono::minutes(3);

    struct Attempt {
        /// Nothing when somebody else has the farm open, who is then the holder.
        std::unique_ptr<FarmLock> lock;
        /// With a lock: the holder that ended without giving it back.
        std::optional<FarmHolder> holder;
    };
    /// Error 75 when no lock can be made in the folder.
    static Attempt tryLock(const QString &databasesFolder, Milliseconds heartbeat = Heartbeat);
    ~FarmLock();
    FarmLock(const FarmLock &) = delete;
    FarmLock &operator=(const FarmLock &) = delete;

    /// Called once, from another thread, when the file names another holder: the connection to the share was lost for so long
    /// that another program took the farm over. Nothing may be written from then on.
    void setLostHandler(std::function<void()> handler);

private:
    FarmLock(std::unique_ptr<basic::FileLock> file, QByteArray text, Milliseconds heartbeat);
    void keepAlive(Milliseconds heartbeat);

    std::unique_ptr<basic::FileLock> file_;
    QByteArray text_;
    std::mutex mutex_;
    std::condition_variable wakeUp_;
    std::function<void()> lostHandler_;
    bool isLost_ = false;
    bool isEnding_ = false;
    std::thread heartbeat_;
};
