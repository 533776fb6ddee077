// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Copies a suite's three Jet files from one folder into new databases in another, and prints per table what was read.
/// All or nothing; failures are RunTimeErrors.
void importFarm(const QString &from, const QString &databasesFolder);
