// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Database.h"

#include <memory>

namespace dao
{

/// A session's handle to a database file that may have failed to open. Using an empty handle raises error 91, whose
/// description names the file and the reason.
class DatabaseHandle
{
public:
    DatabaseHandle() = default;

    void set(std::unique_ptr<Database> database)
    {
        database_ = std::move(database);
        failure_.clear();
    }
    void setFailure(const QString &fileName, const QString &reason);
    bool isSet() const { return database_ != nullptr; }
    const QString &failure() const { return failure_; }

    Database *operator->() const { return &get(); }
    Database &operator*() const { return get(); }

private:
    Database &get() const;

    std::unique_ptr<Database> database_;
    QString failure_;
};

} // namespace dao
