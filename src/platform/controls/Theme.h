// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

class QApplication;

namespace controls
{

/// The colours of the light or the dark palette. The comments give their names in the style sheet and in
/// resources/style/palette.txt.
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

    bool operator==(const PaletteColours &) const = default;
};

/// The appearance of the program: the Fusion style, a palette, the style sheet with its colour names filled in, tinted icons.
/// Until apply() is called the light colours are in effect.
class Theme
{
public:
    /// Applies palette, font (not below 10 pt) and style sheet; may be called again.
    static void apply(QApplication &application, bool dark);
    /// The same with colours of the desktop, which a contrast scheme chooses; `dark` decides about images alone.
    static void apply(QApplication &application, bool dark, const PaletteColours &own);
    static bool isDark();
    static const PaletteColours &colours();
    /// A colour by its name in the palette file; error 5 for an unknown name.
    static QColor colour(const QString &name);
    /// An icon of resources/icons by its base name ("add"), also drawn disabled. `colourName` is a name of the palette: "text",
    /// "onacc", "danger", "muted". The icon follows palette changes. Error 53 for an unknown icon.
    static QIcon icon(const QString &name, const QString &colourName = QStringLiteral("text"));
    /// Sets the property "role" by which the style sheet tells widgets of one class apart, and styles the widget anew.
    static void setRole(QWidget &widget, const char *role);
};

} // namespace controls
