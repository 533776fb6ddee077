// SPDX-License-Identifier: GPL-3.0-or-later
#include "RawSqlite.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace
{

/// Stands in for the program's own collation, which nothing in a baseline compares by.
int compareBytes(void *, int leftSize, const void *left, int rightSize, const void *right)
{
    return sqlite3_strnicmp(static_cast<const char *>(left), static_cast<const char *>(right), std::min(leftSize, rightSize));
}

void provideCollation(void *, sqlite3 *database, int, const char *name)
{
    sqlite3_create_collation(database, name, SQLITE_UTF8, nullptr, compareBytes);
}

void require(int code, sqlite3 *database)
{
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE) {
        std::fprintf(stderr, "raw baseline: %s\n", sqlite3_errmsg(database));
        std::exit(EXIT_FAILURE);
    }
}

} // namespace

void RawSqlite::Close::operator()(sqlite3 *database) const
{
    sqlite3_close(database);
}

void RawSqlite::Finalize::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

RawSqlite::RawSqlite(const QString &path)
{
    sqlite3 *database = nullptr;
    const int opened = sqlite3_open_v2(path.toUtf8().constData(), &database, SQLITE_OPEN_READWRITE, nullptr);
    database_.reset(database);
    require(opened, database);
    sqlite3_collation_needed(database, nullptr, provideCollation);
    run("PRAGMA synchronous = FULL");
}

void RawSqlite::run(const char *sql)
{
    require(sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr), database_.get());
}

sqlite3_stmt *RawSqlite::prepare(const char *sql)
{
    sqlite3_stmt *statement = nullptr;
    require(sqlite3_prepare_v2(database_.get(), sql, -1, &statement, nullptr), database_.get());
    statements_.emplace_back(statement);
    return statement;
}

int RawSqlite::step(sqlite3_stmt *statement, std::initializer_list<std::int64_t> values)
{
    int index = 0;
    for (const std::int64_t value : values) {
        require(sqlite3_bind_int64(statement, ++index, value), database_.get());
    }
    int rows = 0;
    const int columns = sqlite3_column_count(statement);
    int code = sqlite3_step(statement);
    for (; code == SQLITE_ROW; code = sqlite3_step(statement)) {
        for (int column = 0; column < columns; ++column) {
            static_cast<void>(sqlite3_column_text(statement, column));
        }
        ++rows;
    }
    require(code, database_.get());
    require(sqlite3_reset(statement), database_.get());
    return rows;
}
