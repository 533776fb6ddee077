// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

struct ListImport {
    /// Says what would be written and writes nothing.
    bool dryRun = false;
    /// A row without key is matched by its name too.
    bool byName = false;
};

/// Writes the farm lists of a Databases folder to a workbook, or the one list that a `.csv` is named after.
void exportLists(const QString &databasesFolder, const QString &file);

/// Reads farm lists from a workbook or `.csv` and writes what they add and change. False, and nothing is written, when any row is
/// refused; every fault is printed.
bool importLists(const QString &databasesFolder, const QString &file, const ListImport &options);
