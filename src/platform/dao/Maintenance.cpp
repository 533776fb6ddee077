// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Maintenance.h"

#include "platform/basic/DiskSync.h"
#include "platform/basic/FileReplacement.h"
#include "platform/dao/DataError.h"
#include "platform/dao/FileCopy.h"
#include "platform/dao/Sqlite.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <algorithm>

namespace dao
{

namespace
{

/// Steps of SQLite between two reports of progress.
constexpr int StepsPerReport = 50000;

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
double expectedSteps(const Connection &connection)
{
    double steps = StepsPerReport;
    Statement tables(connection,
                     "SELECT name, (SELECT count(*) FROM sqlite_schema AS i WHERE i.type = 'index' AND i.tbl_name = t.name)"
                     " FROM sqlite_schema AS t WHERE type = 'table'");
    while (tables.step()) {
        const std::string_view name = tables.textAt(0);
        const auto indexes = static_cast<double>(tables.integerAt(1));
        Statement rows(connection,
                       "SELECT max(rowid) FROM "
                           + quoteName(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()))));
        // A file from elsewhere may count its rows below zero.
        const std::int64_t count = rows.step() ? std::max<std::int64_t>(rows.integerAt(0), 0) : 0;
        steps += static_cast<double>(count) * 10.0 * (1.0 + indexes);
    }
    return steps;
}

QStringList rowsOf(const Connection &connection, const char *pragma)
{
    QStringList rows;
    for (Statement check(connection, pragma); check.step();) {
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
        if (error.number() != static_cast<int>(DataErrorNumber::Damaged)) {
            throw;
        }
        return {error.description()};
    }
}

} // namespace

void copyFile(const QString &from, const QString &path,
              const std::function<std::unique_ptr<FileCopy>(const QString &part)> &start)
{
    if (QFileInfo::exists(path)) {
        failBackup(path, QStringLiteral("there is a file of this name."));
    }
    basic::UnfinishedFile target(path + QLatin1String(".XXXXXX.part"));
    if (target.path().isEmpty()) {
        failBackup(path, target.errorString());
    }
    {
        // Its file is closed before the renaming.
        const auto copy = start(target.path());
        while (copy->step()) {}
        copy->finish();
    }
    if (!target.rename(path)) {
        failBackup(path, QStringLiteral("the finished copy cannot be given its name."));
    }
    QFile::setPermissions(path, QFile::permissions(from));
    basic::syncToDisk(QFileInfo(path).absolutePath());
}

QStringList checkIntegrity(Connection &connection, const std::function<void(int percent)> &progress)
{
    const QStringList problems = problemsFoundBy([&] {
        Progress counted{progress, expectedSteps(connection)};
        const ProgressReports reports(connection.get(), counted);
        return rowsOf(connection, "PRAGMA integrity_check");
    });
    if (progress) {
        progress(100);
    }
    return problems;
}

QStringList checkPages(Connection &connection)
{
    return problemsFoundBy([&] { return rowsOf(connection, "PRAGMA quick_check"); });
}

} // namespace dao
