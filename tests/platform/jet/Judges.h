// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Database.h"

#include <QByteArray>
#include <QMap>
#include <QStringList>

#include <optional>

/// Other readers of Jet files, which our own is compared with.
namespace judges
{

constexpr char Password[] = "krelpon";

QByteArray fixture(const QString &name);
void write(const QString &path, const QByteArray &bytes);

/// One text a row, sorted, as mdb-export prints a table, and the same from our reader. Zero-length text is null to mdb-export.
QStringList byMdbExport(const QString &path, const QString &table);
QStringList likeMdbExport(const jet::Database &database, const QString &table);

/// The same by table for mdb-reader, the first columns of each row alone; nothing where it is not installed. It takes a Boolean
/// that a row is too old for from the bytes behind the row.
constexpr qsizetype AllColumns = 1000;
std::optional<QMap<QString, QStringList>> byMdbReader(const QString &path, qsizetype columns = AllColumns);
QStringList likeMdbReader(const jet::Database &database, const QString &table, qsizetype columns = AllColumns);

/// What the readers say differently, for every table of the file; empty when they agree, and on Windows, where
/// they do not run.
QString disagreement(const QString &path, qsizetype readerColumns = AllColumns);
/// What the page walker finds.
QString faults(const QString &path);
/// Both.
QString complaints(const QString &path);

} // namespace judges
