// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/FarmApplication.h"

#include <QKeyEvent>

#include <clocale>

namespace
{

/// A line edit would type a character with Alt that is no shortcut. With Control or the third-level key it is a character of the
/// keyboard layout.
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
    // Also the beginning of the names of temporary folders, so without the colon of the window's title.
    setApplicationName(QStringLiteral("Farm Monitoring"));
    // The desktop finds the window's icon by this name.
    setDesktopFileName(QStringLiteral("farm-monitoring"));
    // QApplication sets the desktop's number format; files and statements need a decimal point.
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
