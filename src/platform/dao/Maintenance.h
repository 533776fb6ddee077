// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// Copying and checking an open SQLite file; Storage documents the operations.
namespace dao
{

class Connection;

/// Copies an open SQLite file, or the bytes of any file. Error 75, naming the copy, when it exists or cannot be written.
void copyFile(const Connection &from, const QString &path);
void copyBytes(const QString &from, const QString &path);
QStringList checkIntegrity(Connection &connection, const std::function<void(int percent)> &progress);
QStringList checkPages(Connection &connection);

} // namespace dao
