// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace jet
{

/// Makes a file without tables, which asks for that password (up to 20 characters). The file appears under its name when it is
/// complete. Error 3204 there is one, 3051 it cannot be written, 3026 disk full.
void createDatabase(const QString &path, const QString &password);

} // namespace jet
