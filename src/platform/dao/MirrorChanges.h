// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Sqlite.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct sqlite3;

namespace dao
{

/// Records which rows of a mirror are changed, by SQLite's pre-update hook. What a row has become is read from the mirror when
/// the transaction ends, so a savepoint that is rolled back needs no bookkeeping.
class MirrorChanges
{
public:
    struct Row {
        std::int64_t number = 0;
        /// Whether the row was there before the transaction.
        bool existed = false;
    };

    /// Begins to record; the connection must outlive the object.
    explicit MirrorChanges(Connection &mirror);
    ~MirrorChanges();
    MirrorChanges(const MirrorChanges &) = delete;
    MirrorChanges &operator=(const MirrorChanges &) = delete;

    /// Tables by name, each with its rows in the order of their first change.
    const std::map<std::string, std::vector<Row>> &tables() const { return tables_; }

private:
    static void onChange(void *self, sqlite3 *handle, int operation, const char *database, const char *table, long long oldRow,
                         long long newRow);
    void note(const std::string &table, std::int64_t row, bool existed);

    Connection &mirror_;
    std::map<std::string, std::vector<Row>> tables_;
    std::map<std::string, std::map<std::int64_t, std::size_t>> known_;
};

} // namespace dao
