// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Reads the three databases and prints faults, and notes that are worth knowing. Changes nothing. Returns whether there are no
/// faults.
bool checkFarm(const QString &databasesFolder);
