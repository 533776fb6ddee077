// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QApplication;
class QDBusVariant;

/// Applies the light or dark theme that the desktop prefers, and follows a change while the program runs. The preference comes
/// from the settings portal of the session bus (GNOME, Plasma and others); without one, from the lightness of the desktop's
/// palette at start.
class DesktopColours : public QObject
{
    Q_OBJECT
public:
    explicit DesktopColours(QApplication &application);

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void apply(uint preference);

    QApplication &application_;
    bool darkPalette_;
};
