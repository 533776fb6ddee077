// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Launcher.h"

class ScreenHost;

/// Opens finished workbooks with the desktop's default program. Without one, a box and the status line give the workbook's path.
class DesktopLauncher : public excel::Launcher
{
public:
    explicit DesktopLauncher(ScreenHost &host) : host_(host) {}

    bool open(const QString &path) override;
    void reportPath(const QString &path) override;

private:
    ScreenHost &host_;
};
