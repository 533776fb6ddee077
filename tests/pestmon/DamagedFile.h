// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>
#include <sqlite3.h>

/// Changes a database file through SQLite, past the program, so that a single step of it fails. False when SQLite fails.
inline bool changeFile(const QString &path, const char *statement)
{
    sqlite3 *opened = nullptr;
    const int status = sqlite3_open(path.toUtf8().constData(), &opened);
    const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> file(opened, sqlite3_close);
    return status == SQLITE_OK && sqlite3_exec(file.get(), statement, nullptr, nullptr, nullptr) == SQLITE_OK;
}
