// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Database.h"

#include <memory>

namespace dao
{

/// Where databases are opened and made.
class Workspace
{
public:
    /// Opens an existing file; never creates one. `connect` holds ";pwd=..." . 3024 no such file, 3031 wrong password, 3051 no
    /// permission or a folder of that name, 3045 opened exclusively elsewhere, 3049 damaged, 3343 no database of this program.
    /// The path is found without regard to case. A file without write permission opens all the same; writing to it raises 3027.
    static std::unique_ptr<Database> OpenDatabase(const QString &path, bool exclusive, bool readOnly, const QString &connect);
    /// Makes a new empty file with the password of `connect`. An existing file is refused with 75.
    static std::unique_ptr<Database> CreateDatabase(const QString &path, const QString &connect);
};

} // namespace dao
