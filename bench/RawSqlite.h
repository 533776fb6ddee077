// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// The engine without the program: what a loop in C would do. Ends the process on any error, since a baseline that failed is
/// none.
class RawSqlite
{
public:
    explicit RawSqlite(const QString &path);

    void run(const char *sql);
    sqlite3_stmt *prepare(const char *sql);
    /// Binds whole numbers, steps to the end reading every column as text, resets. Rows stepped.
    int step(sqlite3_stmt *statement, std::initializer_list<std::int64_t> values = {});

private:
    struct Close {
        void operator()(sqlite3 *database) const;
    };
    struct Finalize {
        void operator()(sqlite3_stmt *statement) const;
    };
    std::unique_ptr<sqlite3, Close> database_;
    std::vector<std::unique_ptr<sqlite3_stmt, Finalize>> statements_;
};
