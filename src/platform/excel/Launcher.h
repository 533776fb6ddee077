// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace excel
{

/// The way to the desktop's spreadsheet program. The engine knows no desktop; whoever makes an `Application` brings one.
class Launcher
{
public:
    virtual ~Launcher() = default;

    /// UiDriver the file over; false when no program takes it.
    virtual bool open(const QString &path) = 0;

    /// Tells the user where a finished workbook lies, because `open` found no program for it.
    virtual void tellWhere(const QString &path) = 0;
};

} // namespace excel
