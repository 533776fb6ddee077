// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/FileCopy.h"

#include "platform/basic/DiskSync.h"
#include "platform/dao/Maintenance.h"
#include "platform/dao/Sqlite.h"

#include <QElapsedTimer>
#include <QThread>

#include <sqlite3.h>

#include <utility>

namespace dao
{

namespace
{

constexpr int PagesPerStep = 256;
/// How long a transaction of the program may hold the copy up.
constexpr qint64 MaxWaitMilliseconds = 60'000;
constexpr unsigned long RetryMilliseconds = 5;
constexpr int MaxRestarts = 1000;

[[noreturn]] void failBusy(const QString &path)
{
    throw DataError(DataErrorNumber::Locked,
                    QStringLiteral("%1 is being written all the time, so it could not be copied.").arg(path));
}

class SqliteCopy : public FileCopy
{
public:
    SqliteCopy(const Connection &source, const QString &path)
        : source_(source), copy_(path, Connection::Mode::ReadWrite), path_(path)
    {
        // The copy is worthless until it is finished and synced, so it needs no journal of its own.
        copy_.execute("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA cache_size=-2000");
        backup_ = sqlite3_backup_init(copy_.get(), "main", source.get(), "main");
        if (backup_ == nullptr) {
            copy_.fail(sqlite3_errcode(copy_.get()));
        }
    }
    ~SqliteCopy() override { sqlite3_backup_finish(backup_); }

    bool step() override
    {
        QElapsedTimer waited;
        waited.start();
        int code = sqlite3_backup_step(backup_, PagesPerStep);
        while (code == SQLITE_BUSY || code == SQLITE_LOCKED) {
            if (waited.elapsed() > MaxWaitMilliseconds) {
                failBusy(source_.path());
            }
            QThread::msleep(RetryMilliseconds);
            code = sqlite3_backup_step(backup_, PagesPerStep);
        }
        if (code != SQLITE_OK && code != SQLITE_DONE) {
            (code & 0xFF) == SQLITE_CORRUPT ? source_.fail(code) : copy_.fail(code);
        }
        const int remaining = sqlite3_backup_remaining(backup_);
        restarts_ += remaining > remaining_ ? 1 : 0;
        if (restarts_ > MaxRestarts) {
            failBusy(source_.path());
        }
        remaining_ = remaining;
        // A commit must not wait behind a long queue of pages of the copy.
        basic::syncToDisk(path_);
        return code == SQLITE_OK;
    }

    int percent() const override
    {
        const int pages = sqlite3_backup_pagecount(backup_);
        return pages == 0 ? 0 : static_cast<int>(100LL * (pages - sqlite3_backup_remaining(backup_)) / pages);
    }

    void finish() override
    {
        const int code = sqlite3_backup_finish(std::exchange(backup_, nullptr));
        if (code != SQLITE_OK) {
            copy_.fail(code);
        }
        basic::syncToDisk(path_);
    }

    QStringList check() override { return checkPages(copy_); }

    void interrupt() override { sqlite3_interrupt(copy_.get()); }

private:
    const Connection &source_;
    Connection copy_;
    QString path_;
    sqlite3_backup *backup_ = nullptr;
    int remaining_ = 0;
    int restarts_ = 0;
};

} // namespace

std::unique_ptr<FileCopy> FileCopy::ofSqlite(const Connection &source, const QString &path)
{
    return std::make_unique<SqliteCopy>(source, path);
}

} // namespace dao
