// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

class ChildScreen;
class QWidget;
class ScreenHost;

/// When ListRow and ListCol are reset to 0 before a screen opens.
enum class ZeroPosition { Never, First, AfterReportsFolder };

/// A picture of the menu and the screen that it opens. The menu itself has the icons and captions.
struct MenuEntry {
    /// objectName of the picture on the menu, such as "imSpray".
    QString picture;
    ZeroPosition zeroPosition = ZeroPosition::Never;
    /// Make the reports folder before the screen opens.
    bool reportsFolder = false;
    /// The screen's Tag.
    QString mode;
    /// Creates the screen; when empty, the picture is disabled.
    std::function<ChildScreen *(ScreenHost &host, QWidget *parent)> factory;
};
