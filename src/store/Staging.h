// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/FileLock.h"
#include "store/Schema.h"

#include <QString>

#include <functional>
#include <memory>

/// New databases: created in a temporary folder next to the target and moved there when all three are complete. Whatever a
/// killed program has left, there or in the target, is removed by the next one.
class Staging
{
public:
    /// Refuses a target that has one of the databases, that is not a folder, or that another program makes databases for.
    explicit Staging(const QString &databasesFolder);
    ~Staging();
    Staging(const Staging &) = delete;
    Staging &operator=(const Staging &) = delete;

    QString path(store::DatabaseFile file) const;
    /// The staged folder itself, laid out as a Databases folder.
    QString folder() const { return staged_; }
    /// Runs `body`; an error of it names the target in place of the staged folder.
    void fill(const std::function<void()> &body) const;
    /// All three or none.
    void moveIn();

private:
    /// Removes the file before it gives the lock back.
    struct Unlocker {
        void operator()(basic::FileLock *lock) const;
    };

    void lock();
    void removeLeftovers();
    void requireNew() const;
    void makeFolder();
    QString targetOf(store::DatabaseFile file) const;
    bool moveFolder();
    void moveFiles();

    QString target_;
    /// Its text is the name of the staged folder, by which the next program finds what a killed one has left.
    std::unique_ptr<basic::FileLock, Unlocker> lock_;
    QString staged_;
};

/// Creates three empty databases in a folder, all or none.
void createDatabases(const QString &databasesFolder, dao::FileKind kind = dao::FileKind::Sqlite);
