// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/FileCopy.h"

#include "platform/basic/DiskSync.h"
#include "platform/dao/Maintenance.h"
#include "platform/dao/Sqlite.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace dao
{

namespace
{

constexpr int PagesPerStep = 256;
constexpr qint64 BytesPerStep = 1 << 20;
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

class ByteCopy : public FileCopy
{
public:
    ByteCopy(const QString &source, const QString &path) : source_(source), copy_(path), stamp_(stamp())
    {
        if (!source_.open(QIODevice::ReadOnly) || !copy_.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            fail(source_.isOpen() ? copy_ : source_);
        }
    }

    bool step() override
    {
        const QByteArray bytes = source_.read(BytesPerStep);
        if (source_.error() != QFileDevice::NoError) {
            fail(source_);
        }
        if (copy_.write(bytes) != bytes.size() || !copy_.flush()) {
            fail(copy_);
        }
        basic::syncToDisk(copy_.fileName());
        if (!source_.atEnd()) {
            return true;
        }
        if (const QByteArray now = stamp(); now != stamp_) {
            if (++restarts_ > MaxRestarts) {
                failBusy(source_.fileName());
            }
            stamp_ = now;
            source_.seek(0);
            copy_.resize(0);
            copy_.seek(0);
            return true;
        }
        return false;
    }

    int percent() const override { return static_cast<int>(100 * source_.pos() / std::max<qint64>(source_.size(), 1)); }

    void finish() override
    {
        copy_.close();
        basic::syncToDisk(copy_.fileName());
    }

    QStringList check() override { return {}; }

private:
    /// Changes with every write: a program that writes the file in place changes its time.
    QByteArray stamp() const
    {
        const QFileInfo info(source_.fileName());
        return QByteArray::number(info.size()) + ' ' + QByteArray::number(info.lastModified().toMSecsSinceEpoch());
    }
    [[noreturn]] static void fail(const QFile &file)
    {
        throw DataError(DataErrorNumber::DiskError,
                        QStringLiteral("%1 cannot be copied: %2").arg(file.fileName(), file.errorString()));
    }

    QFile source_;
    QFile copy_;
    QByteArray stamp_;
    int restarts_ = 0;
};

} // namespace

std::unique_ptr<FileCopy> FileCopy::ofSqlite(const Connection &source, const QString &path)
{
    return std::make_unique<SqliteCopy>(source, path);
}

std::unique_ptr<FileCopy> FileCopy::ofBytes(const QString &source, const QString &path)
{
    return std::make_unique<ByteCopy>(source, path);
}

} // namespace dao
