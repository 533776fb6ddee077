// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>

struct SessionContext;

/// The small text files in the program's folder through which the suite's main module hands over the chosen farm and season, and
/// in which the start of the last period is stored. Each holds one value on a line.
///
/// A missing file is no error: the value becomes empty or 0. A file that is there but cannot be read as its value (empty, or
/// letters where a key is expected) raises a RunTimeError that names it.
void Read_FindFarm(SessionContext &session);
void Read_FindFarmID(SessionContext &session);
void Read_FindYear(SessionContext &session);
/// Without the file the farm's key is cleared and the season's stays as it was.
void Read_FindYearID(SessionContext &session);

/// Fills CurrentSDate; empty when there is no file. A file that gives no date counts as missing: the returned sentence then says
/// so, otherwise it is empty.
QString Read_FindSDate(SessionContext &session);
/// Writes nothing when the farm is only shown.
void Write_FindSDate(const SessionContext &session);
/// Hands the farm's name back to the suite.
void Write_FindFarm(const SessionContext &session);

/// Writes the four files of farm and season, as a start of the monitoring reads them.
void Write_HandOff(const SessionContext &session);
/// The number that a season's name begins with, as a year does; 0 for a name without one.
std::int32_t seasonKey(const QString &season);
