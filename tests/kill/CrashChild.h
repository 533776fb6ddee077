// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The program at work on a farm, in a process of its own: it starts as the program does, with the block copy, then issues
/// instructions, saves them again, deletes them, captures cells, completes with repeat, adds and deletes analyses, saves a
/// workbook and imports, in a loop. On `reports` (a file descriptor) it says "begin" with what it is about to write, and "end"
/// after the store answered. It is killed from outside, or kills itself at a call that changes a file. Never returns, unless
/// something else goes wrong, which it then reports on the standard error.
namespace crashChild
{

inline constexpr int PointsOfBlock[] = {8, 6};
inline constexpr int Pests = 4;
inline const QString Worker = QStringLiteral("Anna");
/// Below the program's folder. Its first cell has the number of the save.
inline const QString Workbook = QStringLiteral("/Reports/Kill.xls");

struct Orders {
    QString appPath;
    QString jetFolder;
    unsigned int seed = 0;
    int reports = -1;
    /// It kills itself in the write of this number, from 1; 0 for never.
    int lastWrite = 0;
    /// The transactions of an SQLite file then have no journal on the disk.
    bool withoutJournal = false;
};

int workUntilKilled(const Orders &orders);

} // namespace crashChild
