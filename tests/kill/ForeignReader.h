// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Reads databases by the command-line programs of SQLite and of mdbtools, which share no code with this program. They must be
/// installed.
namespace foreignReader
{

/// The rows of whole numbers of some columns as "1|2", sorted; nothing when the file cannot be read.
std::optional<QStringList> rows(const QString &file, const QString &table, const QStringList &columns);

/// What differs between what this program and the other one read of the monitoring tables of a pest database; empty for nothing.
QString disagreement(const QString &file);

} // namespace foreignReader
