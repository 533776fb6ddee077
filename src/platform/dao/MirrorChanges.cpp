// SPDX-License-Identifier: GPL-3.0-or-later
// Debian's SQLite has the hook; its header declares it on request.
#define SQLITE_ENABLE_PREUPDATE_HOOK
#include <sqlite3.h>

#include "platform/dao/MirrorChanges.h"

namespace dao
{

MirrorChanges::MirrorChanges(Connection &mirror) : mirror_(mirror)
{
    sqlite3_preupdate_hook(
        mirror_.get(),
        [](void *self, sqlite3 *handle, int operation, const char *database, const char *table, sqlite3_int64 oldRow,
           sqlite3_int64 newRow) { onChange(self, handle, operation, database, table, oldRow, newRow); },
        this);
}

MirrorChanges::~MirrorChanges()
{
    sqlite3_preupdate_hook(mirror_.get(), nullptr, nullptr);
}

void MirrorChanges::onChange(void *self, sqlite3 *, int operation, const char *, const char *table, long long oldRow,
                             long long newRow)
{
    auto &changes = *static_cast<MirrorChanges *>(self);
    const std::string name = table;
    // SQLite's own list of autonumbers.
    if (name == "sqlite_sequence") {
        return;
    }
    if (operation != SQLITE_INSERT) {
        changes.note(name, oldRow, true);
    }
    if (operation == SQLITE_INSERT || (operation == SQLITE_UPDATE && newRow != oldRow)) {
        changes.note(name, newRow, false);
    }
}

void MirrorChanges::note(const std::string &table, std::int64_t row, bool existed)
{
    std::vector<Row> &rows = tables_[table];
    // The first change tells whether the row was there before.
    if (known_[table].try_emplace(row, rows.size()).second) {
        rows.push_back({row, existed});
    }
}

} // namespace dao
