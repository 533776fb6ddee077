// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Maintenance.h"

#include "platform/basic/DiskSync.h"
#include "platform/dao/Engine.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <sqlite3.h>

#include <algorithm>

namespace dao
{

namespace
{

/// Steps of SQLite between two reports of progress.
constexpr int StepsPerReport = 50000;

void copyPages(const Connection &from, const Connection &to)
{
    sqlite3_backup *backup = sqlite3_backup_init(to.get(), "main", from.get(), "main");
    if (backup == nullptr) {
        to.fail(sqlite3_errcode(to.get()));
    }
    const int stepped = sqlite3_backup_step(backup, -1);
    const int finished = sqlite3_backup_finish(backup);
    if (stepped == SQLITE_BUSY || stepped == SQLITE_LOCKED) {
        from.fail(SQLITE_BUSY);
    }
    if (finished != SQLITE_OK) {
        to.fail(finished);
    }
}

[[noreturn]] void failBackup(const QString &path, const QString &reason)
{
    throw basic::RunTimeError(basic::ErrorNumber::PathFileAccess,
                              QStringLiteral("The copy %1 cannot be created: %2").arg(path, reason));
}

/// Counts SQLite's steps while it checks a file, against the number that the sizes of the tables suggest.
struct Progress {
    const std::function<void(int)> &report;
    double expectedSteps;
    double steps = 0;

    static int callback(void *self)
    {
        auto *progress = static_cast<Progress *>(self);
        progress->steps += StepsPerReport;
        progress->report(static_cast<int>(std::min(99.0, 100.0 * progress->steps / progress->expectedSteps)));
        return 0;
    }
};

class ProgressReports
{
public:
    ProgressReports(sqlite3 *handle, Progress &progress) : handle_(handle)
    {
        if (progress.report) {
            sqlite3_progress_handler(handle_, StepsPerReport, &Progress::callback, &progress);
        }
    }
    ~ProgressReports() { sqlite3_progress_handler(handle_, 0, nullptr, nullptr); }
    ProgressReports(const ProgressReports &) = delete;
    ProgressReports &operator=(const ProgressReports &) = delete;

private:
    sqlite3 *handle_;
};

/// About ten steps for a row and as many for each of its index entries.
double expectedSteps(Engine &engine)
{
    double steps = StepsPerReport;
    for (const QString &name : engine.catalog().tableNames()) {
        if (const auto table = engine.catalog().find(name)) {
            const auto rows = engine.connection().number("SELECT max(rowid) FROM " + table->quotedName);
            // A file from elsewhere may count its rows below zero.
            steps += static_cast<double>(std::max<std::int64_t>(rows, 0)) * 10.0 * static_cast<double>(1 + table->indexes.size());
        }
    }
    return steps;
}

QStringList rowsOf(Engine &engine, const char *pragma)
{
    QStringList rows;
    for (Statement check(engine.connection(), pragma); check.step();) {
        const auto text = check.textAt(0);
        rows.push_back(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    }
    return rows;
}

/// A file too damaged for a check to begin or to end has its error for a problem.
QStringList problemsFoundBy(const std::function<QStringList()> &check)
{
    try {
        QStringList problems = check();
        problems.removeAll(QStringLiteral("ok"));
        return problems;
    } catch (const DataError &error) {
        if (error.number() != static_cast<int>(DataErrorNumber::DamagedFile)) {
            throw;
        }
        return {error.description()};
    }
}

} // namespace

void copyFile(Engine &engine, const QString &path)
{
    if (QFileInfo::exists(path)) {
        failBackup(path, QStringLiteral("there is a file of this name."));
    }
    QTemporaryFile target(path + QLatin1String(".XXXXXX.part"));
    if (!target.open()) {
        failBackup(path, target.errorString());
    }
    target.close();
    {
        Connection copy(target.fileName(), Connection::Mode::ReadWrite);
        // Writes of an open scope are not part of the file yet, so another connection reads it.
        if (engine.isInTransaction() && !engine.isExclusive()) {
            copyPages(Connection(engine.path(), Connection::Mode::ReadOnly), copy);
        } else {
            copyPages(engine.connection(), copy);
        }
    }
    // QTemporaryFile would go by its own idea of the name, and rename of QFile never replaces a file.
    if (!QFile::rename(target.fileName(), path)) {
        failBackup(path, QStringLiteral("the finished copy cannot be given its name."));
    }
    target.setAutoRemove(false);
    QFile::setPermissions(path, QFile::permissions(engine.path()));
    basic::syncToDisk(QFileInfo(path).absolutePath());
}

QStringList checkIntegrity(Engine &engine, const std::function<void(int percent)> &progress)
{
    const QStringList problems = problemsFoundBy([&] {
        Progress counted{progress, expectedSteps(engine)};
        const ProgressReports reports(engine.connection().get(), counted);
        return rowsOf(engine, "PRAGMA integrity_check");
    });
    if (progress) {
        progress(100);
    }
    return problems;
}

QStringList checkPages(Engine &engine)
{
    return problemsFoundBy([&] { return rowsOf(engine, "PRAGMA quick_check"); });
}

} // namespace dao
