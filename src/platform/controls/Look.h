// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

class QApplication;

namespace controls
{

/// The colours by name; see resources/style/palette in the light and the dark form.
struct PaletteColours {
    QColor window, base, header, line, border, text, muted, disabled, accent, accentHover, accentPressed, soft, onAccent, danger;
};

/// The look of the program: Fusion, the palette, the style sheet with its names filled in, the icons tinted.
class Look
{
public:
    /// Applies palette, font (not below 10 pt) and style sheet; picks dark when the desktop's palette is dark.
    static void apply(QApplication &application);
    static void apply(QApplication &application, bool dark);
    static bool isDark();
    static const PaletteColours &colours();
    /// An icon of resources/icons by its name without ending ("add"), in text colour, with its disabled form.
    /// `colour` names another palette colour: "onacc", "danger", "muted".
    static QIcon icon(const QString &name, const QString &colour = QStringLiteral("text"));
};

} // namespace controls
