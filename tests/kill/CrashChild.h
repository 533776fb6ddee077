// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The program at work on a farm, in a process of its own: it starts as the program does, then issues instructions, captures
/// cells, completes with repeat and imports, in a loop, through the screen. On `reports` (a file descriptor) it says "begin"
/// with what it is about to write, and "end" after the store answered. Never returns, unless something other than being killed
/// goes wrong, which it then reports on the standard error.
namespace crashChild
{

inline constexpr int PointsOfBlock[] = {8, 6};
inline constexpr int Pests = 4;
inline const QString Worker = QStringLiteral("Anna");

struct Orders {
    QString appPath;
    QString jetFolder;
    unsigned int seed = 0;
    int reports = -1;
};

int workUntilKilled(const Orders &orders);

} // namespace crashChild
