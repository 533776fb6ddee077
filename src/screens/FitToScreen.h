// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QScreen>
#include <QWidget>

/// Gives a dialog its size, or what the screen has for it next to the window frame.
inline void fitToScreen(QWidget &dialog, const QSize &wanted)
{
    constexpr QSize Frame(40, 80);
    dialog.resize(wanted.boundedTo(dialog.screen()->availableSize() - Frame));
}
