// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/DailyBackup.h"

#include "platform/basic/Clock.h"
#include "platform/basic/RunTimeError.h"

#include <QFileInfo>

#include <new>

namespace store
{

DailyBackup::~DailyBackup()
{
    stop();
}

void DailyBackup::stop()
{
    if (thread_.joinable()) {
        copy_->stop();
        thread_.join();
    }
}

void DailyBackup::startForToday()
{
    const QDate today = basic::Clock::today();
    if (isRunning_ || today == lastDay_ || !session_.ViewOnlyReason.isEmpty() || !session_.dbPest.isSet()) {
        return;
    }
    stop();
    lastDay_ = today;
    isRunning_ = true;
    copy_ = std::make_unique<DatedCopy>([this](int percent) { Q_EMIT progressed(percent); });
    const dao::Database &database = *session_.dbPest;
    thread_ = std::thread([this, &database, folder = QFileInfo(database.Name()).absolutePath(), today] {
        QString failure;
        try {
            run(database, folder, today);
        } catch (const basic::RunTimeError &error) {
            failure = error.description();
        } catch (const std::bad_alloc &) {
            failure = tr("There is not enough memory.");
        }
        isRunning_ = false;
        Q_EMIT finished(failure);
    });
}

void DailyBackup::run(const dao::Database &database, const QString &databasesFolder, QDate day)
{
    const BackupFolder folder(databasesFolder);
    folder.create();
    const auto lock = folder.lock();
    const QString target = folder.copyOfDay(day);
    if (DatedCopy::isComplete(target)) {
        folder.removeLeftovers();
    } else {
        copy_->make(database, folder, target, day);
    }
}

} // namespace store
