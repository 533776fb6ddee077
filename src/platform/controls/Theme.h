// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

class QApplication;

namespace controls
{

/// The colours of one form, light or dark. The names in the style sheet and in resources/style/palette.txt stand behind each.
struct PaletteColours {
    QColor window;
    QColor base;
    QColor header;
    QColor line;
    QColor border;
    QColor text;
    QColor muted;
    QColor disabled;
    QColor accent;
    QColor accentHover; // ahover
    QColor accentPressed; // apress
    QColor soft;
    QColor onAccent; // onacc
    QColor danger;
};

/// The look of the program: Fusion, the palette, the style sheet with its names filled in, the icons tinted.
/// Before apply() the light colours hold.
class Theme
{
public:
    /// Applies palette, font (not below 10 pt) and style sheet; picks dark when the desktop's palette is dark.
    static void apply(QApplication &application);
    static void apply(QApplication &application, bool dark);
    static bool isDark();
    static const PaletteColours &colours();
    /// Of a colour's name in the palette file; error 5 for a name that is not there.
    static QColor colour(const QString &name);
    /// An icon of resources/icons by its name without ending ("add"), with its disabled form. `colourName` is a name of the
    /// palette: "text", "onacc", "danger", "muted". The icon follows the palette by itself. Error 53 without such an icon.
    static QIcon icon(const QString &name, const QString &colourName = QStringLiteral("text"));
};

} // namespace controls
