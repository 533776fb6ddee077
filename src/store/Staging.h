// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Schema.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

/// New databases: created in a temporary folder next to the target and moved there when all three are complete.
class Staging
{
public:
    /// Refuses a target that has one of the databases, or that is not a folder.
    explicit Staging(const QString &databasesFolder);

    QString path(store::DatabaseFile file) const;
    /// Creates all three with their tables.
    void createEmpty(dao::FileKind kind = dao::FileKind::Sqlite) const;
    /// The staged folder itself, laid out as a Databases folder.
    QString folder() const { return staged_->path(); }
    /// All three or none.
    void moveIn();

private:
    QString target_;
    std::unique_ptr<QTemporaryDir> staged_;
};

/// Creates three empty databases in a folder, all or none.
void createDatabases(const QString &databasesFolder, dao::FileKind kind = dao::FileKind::Sqlite);
