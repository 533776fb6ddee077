// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/CommitScope.h"

#include "platform/dao/Engine.h"

namespace dao
{

CommitScope::CommitScope(Database &database) : database_(database)
{
    database_.state().engine->openScope();
}

CommitScope::~CommitScope()
{
    if (open_) {
        basic::runOrIgnore([this] { commit(); });
    }
}

void CommitScope::commit()
{
    if (open_) {
        open_ = false;
        database_.state().engine->commitScope();
    }
}

void CommitScope::rollback()
{
    if (open_) {
        open_ = false;
        database_.state().engine->rollbackScope();
    }
}

} // namespace dao
