// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Fills the three empty databases of a folder with an invented farm office: master data, two seasons of monitoring up to today,
/// analyses of all five kinds. The same day always gives the same data.
void fillDemoFarm(const QString &databasesFolder);
