// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Database.h"
#include "store/BackupFolder.h"

#include <QString>

#include <atomic>
#include <functional>
#include <mutex>

namespace store
{

/// Makes one dated copy. One thread runs it, any other may stop it.
class DatedCopy
{
public:
    /// Called with the percentage now and then.
    explicit DatedCopy(std::function<void(int percent)> progress = {}) : progress_(std::move(progress)) {}

    /// Copies the database, as of one moment while the call runs, to `target`, checks the copy, gives it its name and removes the
    /// oldest ones. Under the folder's lock. False when it was stopped. Of a damaged database no copy is made, so that the good
    /// copies stay: error 75. Afterwards the copy is on the disk under its name.
    bool make(const dao::Database &database, const BackupFolder &folder, const QString &target, QDate today);
    /// A file that make() has finished: complete and without damage of its pages.
    static bool isComplete(const QString &path);
    void stop();

private:
    bool fill(const dao::Database &database, const QString &path);
    void report(int percent) const;

    std::function<void(int percent)> progress_;
    std::atomic<bool> isStopped_ = false;
    std::mutex mutex_;
    dao::FileCopy *running_ = nullptr;
};

} // namespace store
