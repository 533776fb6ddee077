// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/Icons.h"

#include "platform/controls/Theme.h"

#include <QAbstractButton>
#include <QLabel>

void setIcons(std::initializer_list<ButtonIcon> icons)
{
    for (const ButtonIcon &entry : icons) {
        entry.button->setIcon(controls::Theme::icon(QLatin1String(entry.icon), QLatin1String(entry.colour)));
    }
}

void setLabelIcon(QLabel &label, int side, const QString &icon, const QString &colour)
{
    label.setPixmap(controls::Theme::icon(icon, colour).pixmap(QSize(side, side), label.devicePixelRatioF()));
}
