// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Engine.h"

namespace dao
{

WriteScope::WriteScope(Database &database) : database_(database)
{
    database_.state().engine->openScope();
}

WriteScope::~WriteScope()
{
    if (open_) {
        basic::runOrIgnore([this] { commit(); });
    }
}

void WriteScope::commit()
{
    if (open_) {
        open_ = false;
        database_.state().engine->commitScope();
    }
}

void WriteScope::rollback()
{
    if (open_) {
        open_ = false;
        database_.state().engine->rollbackScope();
    }
}

} // namespace dao
