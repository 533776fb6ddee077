// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Launcher.h"

class ScreenHost;

/// UiDriver finished workbooks to the program that the desktop opens them with, and tells the user in a box and in the status
/// line where a workbook lies when there is none.
class DesktopLauncher : public excel::Launcher
{
public:
    explicit DesktopLauncher(ScreenHost &host) : host_(host) {}

    bool open(const QString &path) override;
    void tellWhere(const QString &path) override;

private:
    ScreenHost &host_;
};
