// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

/// Copying and checking an open SQLite file; Storage documents the operations.
namespace dao
{

class Connection;
class FileCopy;

/// Makes a whole copy of the file `from` under another name, then gives it its own. Error 75, naming the copy, when it exists or
/// cannot be written.
void copyFile(const QString &from, const QString &path,
              const std::function<std::unique_ptr<FileCopy>(const QString &part)> &start);
QStringList checkIntegrity(Connection &connection, const std::function<void(int percent)> &progress);
QStringList checkPages(Connection &connection);

} // namespace dao
