// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

namespace jet
{

/// What a look at every page of a file found.
struct CheckReport {
    /// One sentence each, with table, page and row where they are known; empty for a valid file.
    QStringList faults;
    std::uint32_t tables = 0;
    std::uint64_t rows = 0;
    std::uint64_t indexEntries = 0;
};

/// Checks a file: that every page has one use or is free, that rows, moved rows and long values are where the maps and pointers
/// say, that every index entry has its row and the other way round, and that all counts are true. An Error when the file cannot
/// be opened at all.
CheckReport check(const QString &path, const QString &password);

} // namespace jet
