// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/FarmApplication.h"

#include <QKeyEvent>

#include <clocale>

namespace
{

/// A character with Alt that no button or caption has taken is nothing at all, but a line edit would type it. With Control or
/// the key of the third level it is a character of the keyboard's own.
bool isLetterWithAlt(const QEvent &event)
{
    if (event.type() != QEvent::KeyPress) {
        return false;
    }
    const auto &key = static_cast<const QKeyEvent &>(event);
    const auto others = Qt::ControlModifier | Qt::MetaModifier | Qt::GroupSwitchModifier;
    return (key.modifiers() & Qt::AltModifier) && !(key.modifiers() & others) && !key.text().isEmpty()
        && key.text().at(0).isPrint();
}

} // namespace

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
    if (isLetterWithAlt(*event)) {
        event->ignore();
        return false;
    }
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
