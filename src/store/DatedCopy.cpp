// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/DatedCopy.h"

#include "platform/basic/DiskSync.h"
#include "platform/basic/FileReplacement.h"
#include "platform/basic/Permissions.h"
#include "platform/basic/RunTimeError.h"
#include "platform/dao/Workspace.h"
#include "store/Schema.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

using basic::ErrorNumber;
using basic::RunTimeError;

namespace store
{

namespace
{

/// Of the whole work; the rest is the check.
constexpr int PercentOfCopying = 80;

} // namespace

bool DatedCopy::make(const dao::Database &database, const BackupFolder &folder, const QString &target, QDate today)
{
    folder.removeLeftovers();
    folder.requireSpace(QFileInfo(database.Name()).size(), today);
    const QString unfinished = target + QStringLiteral(".new");
    const auto removeUnfinished = qScopeGuard([&] { QFile::remove(unfinished); });
    if (!QFile(unfinished).open(QIODevice::NewOnly)) {
        throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("%1 cannot be created.").arg(unfinished));
    }
    basic::copyPermissions(database.Name(), unfinished);
    if (!fill(database, unfinished)) {
        return false;
    }
    const QString failure = basic::replaceFile(unfinished, target);
    if (!failure.isEmpty() || QFileInfo(target).size() == 0) {
        throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("%1 could not be written: %2.").arg(target, failure));
    }
    basic::syncToDisk(folder.path());
    folder.removeOldest(today, target);
    report(100);
    return true;
}

bool DatedCopy::fill(const dao::Database &database, const QString &path)
{
    const std::unique_ptr<dao::FileCopy> copy = database.startCopy(path);
    const auto setRunning = [this](dao::FileCopy *running) {
        const std::lock_guard guard(mutex_);
        running_ = running;
    };
    setRunning(copy.get());
    const auto forget = qScopeGuard([&] { setRunning(nullptr); });
    while (copy->step()) {
        if (isStopped_) {
            return false;
        }
        report(copy->percent() * PercentOfCopying / 100);
    }
    copy->finish();
    QStringList faults;
    try {
        faults = copy->check();
    } catch (const RunTimeError &) {
        if (!isStopped_) {
            throw;
        }
    }
    if (!faults.isEmpty() && !isStopped_) {
        throw RunTimeError(ErrorNumber::PathFileAccess,
                           QStringLiteral("%1 is damaged (%2). It was not copied, and the previous copies are unchanged.")
                               .arg(database.Name(), faults.front()));
    }
    return !isStopped_;
}

void DatedCopy::report(int percent) const
{
    if (progress_) {
        progress_(percent);
    }
}

bool DatedCopy::isComplete(const QString &path)
{
    return basic::runOrIgnore([&] {
        const auto copy = dao::Workspace::OpenDatabase(path, false, true, connectText());
        if (const QStringList faults = copy->checkPages(); !faults.isEmpty()) {
            throw RunTimeError(ErrorNumber::PathFileAccess, faults.front());
        }
    });
}

void DatedCopy::stop()
{
    isStopped_ = true;
    const std::lock_guard guard(mutex_);
    if (running_ != nullptr) {
        running_->interrupt();
    }
}

} // namespace store
