// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

class ChildScreen;
class QWidget;
class ScreenHost;

/// When ListRow and ListCol go back to 0 on the way to a screen.
enum class ZeroPosition { Never, First, AfterReportsFolder };

/// One picture of the menu: which one, and what a click on it does. The pictures and captions themselves are the menu's.
struct MenuEntry {
    /// objectName of the picture on the menu, such as "imSpray".
    QString picture;
    ZeroPosition zeroPosition = ZeroPosition::Never;
    /// Make the reports folder before the screen opens.
    bool reportsFolder = false;
    /// Handed to the screen in its Tag.
    QString mode;
    /// Makes the screen; empty while there is none, the picture is then disabled.
    std::function<ChildScreen *(ScreenHost &host, QWidget *parent)> factory;
};
