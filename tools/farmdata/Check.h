// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Reads the three databases through and tells what is wrong and what is worth knowing. Changes nothing. Returns whether
/// nothing is wrong; notes count as nothing wrong.
bool checkFarm(const QString &databasesFolder);
