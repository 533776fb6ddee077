// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/FarmApplication.h"

#include <clocale>

FarmApplication::FarmApplication(int &argc, char **argv) : QApplication(argc, argv)
{
    setApplicationName(QStringLiteral("Torvane Data: Farm Monitoring"));
    // By this name a desktop finds the icon of the window.
    setDesktopFileName(QStringLiteral("farm-monitoring"));
    // The base class takes over the desktop's number format; files and statements are written with a point.
    std::setlocale(LC_NUMERIC, "C");
}

bool FarmApplication::notify(QObject *receiver, QEvent *event)
{
    if (!handler_) {
        return QApplication::notify(receiver, event);
    }
    try {
        return QApplication::notify(receiver, event);
    } catch (const basic::RunTimeError &error) {
        handler_(error);
    }
    return true;
}

QString errorText(const basic::RunTimeError &error)
{
    return QStringLiteral("Run-time error %1\n\n%2").arg(error.number()).arg(error.description());
}
