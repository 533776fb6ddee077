// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace excel
{

/// Opens files in the desktop's spreadsheet program. The creator of an `Application` provides one.
class Launcher
{
public:
    virtual ~Launcher() = default;

    /// Opens the file; false when no program does.
    virtual bool open(const QString &path) = 0;

    /// Reports where a finished workbook was saved, when `open` found no program for it.
    virtual void reportPath(const QString &path) = 0;
};

} // namespace excel
