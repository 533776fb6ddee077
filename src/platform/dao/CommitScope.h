// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Database.h"

namespace dao
{

/// One transaction of a file. Leaving the scope commits it, also when an error passes through: what was written before the error
/// stays, as the screens' rules ask for steps that are done in part. A process that is killed inside leaves nothing of it.
///
/// Call commit() to learn of a failed write; the destructor reports nothing and rolls back when its commit fails. Scopes nest;
/// the outermost one counts. The file is locked for other writers from the first write on, not before, so a scope that writes
/// nothing costs nothing. When SQLite itself rolls the transaction back (on a full disk, say), every later write and the commit
/// raise that error again until the outermost scope has ended.
class CommitScope
{
public:
    explicit CommitScope(Database &database);
    ~CommitScope();
    CommitScope(const CommitScope &) = delete;
    CommitScope &operator=(const CommitScope &) = delete;
    void commit();
    /// Drops everything written since construction.
    void rollback();

private:
    Database &database_;
    bool open_ = true;
};

} // namespace dao
