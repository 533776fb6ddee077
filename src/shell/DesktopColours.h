// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

class QApplication;
class QObject;

/// Applies the light or dark theme that the desktop prefers, and follows a change while the program runs. The preference comes
/// from the settings portal of the session bus (GNOME, Plasma and others); without one, from the lightness of the desktop's
/// palette at start. On Windows it comes from the user's settings, where a contrast scheme goes before light and dark.
class DesktopColours
{
public:
    explicit DesktopColours(QApplication &application);
    ~DesktopColours();
    DesktopColours(const DesktopColours &) = delete;
    DesktopColours &operator=(const DesktopColours &) = delete;

private:
    std::unique_ptr<QObject> watcher_;
};
