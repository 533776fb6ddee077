// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/SessionContext.h"
#include "store/DatedCopy.h"

#include <QObject>

#include <atomic>
#include <memory>
#include <thread>

namespace store
{

/// The copy of each day, made in the background while the farm is in use. A write waits for a step of the copy at most.
class DailyBackup : public QObject
{
    Q_OBJECT

public:
    explicit DailyBackup(SessionContext &session) : session_(session) {}
    /// Stops a copy in progress; it is made at the next start.
    ~DailyBackup() override;

    /// Makes the day's copy of the open pest database, unless the day has a complete one, a copy is running or the farm is only
    /// shown.
    void startForToday();
    bool isRunning() const { return isRunning_; }

Q_SIGNALS:
    /// From another thread, as finished().
    void progressed(int percent);
    /// Why no copy was made; empty when the day has one.
    void finished(const QString &failure);

private:
    void run(const dao::Database &database, const QString &databasesFolder, QDate day);
    void stop();

    SessionContext &session_;
    QDate lastDay_;
    std::atomic<bool> isRunning_ = false;
    std::unique_ptr<DatedCopy> copy_;
    std::thread thread_;
};

} // namespace store
