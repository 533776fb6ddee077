// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <initializer_list>

class QAbstractButton;
class QLabel;

/// An icon by its name and colour, as controls::Theme::icon takes them.
struct ButtonIcon {
    QAbstractButton *button;
    const char *icon;
    const char *colour = "text";
};
void setIcons(std::initializer_list<ButtonIcon> icons);

/// Side of the icon in a screen's banner, in pixels.
inline constexpr int BannerIcon = 24;
/// Shows an icon of `side` pixels on a label; it follows a change of the palette.
void setLabelIcon(QLabel &label, int side, const QString &icon, const QString &colour = QStringLiteral("text"));
void clearLabelIcon(QLabel &label);
