// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Writes the three databases of a folder out, and prints the count of each table. Failures are RunTimeErrors; then nothing is
/// left behind.

/// Each table to NAME.csv in a new or empty folder: UTF-8, comma, CRLF, text in quotes; null is empty and zero-length text "".
/// Dates are yyyy-MM-dd HH:mm:ss, Booleans True and False. A Jet file with all its tables, also those that the program ignores.
void exportToCsv(const QString &databasesFolder, const QString &to);

/// To three Jet files in the folder `databasesFolder` of a new farm, with the tables and fields of the program. Every table is
/// read back and compared, row by row.
void exportToJet(const QString &from, const QString &databasesFolder);
