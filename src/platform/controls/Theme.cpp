// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/Theme.h"

#include "platform/basic/RunTimeError.h"
#include "platform/controls/IconEngine.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace controls
{

namespace
{

constexpr double MinFont = 10;

struct NamedMember {
    const char *name;
    QColor PaletteColours::*member;
};

constexpr std::array<NamedMember, 14> Members{{
    {"window", &PaletteColours::window},
    {"base", &PaletteColours::base},
    {"header", &PaletteColours::header},
    {"line", &PaletteColours::line},
    {"border", &PaletteColours::border},
    {"text", &PaletteColours::text},
    {"muted", &PaletteColours::muted},
    {"disabled", &PaletteColours::disabled},
    {"accent", &PaletteColours::accent},
    {"ahover", &PaletteColours::accentHover},
    {"apress", &PaletteColours::accentPressed},
    {"soft", &PaletteColours::soft},
    {"onacc", &PaletteColours::onAccent},
    {"danger", &PaletteColours::danger},
}};

QString readResource(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw basic::RunTimeError(basic::ErrorNumber::FileNotFound, QStringLiteral("%1 is not built in.").arg(path));
    }
    return QString::fromUtf8(file.readAll());
}

const NamedMember *memberOf(const QString &name)
{
    const auto found =
        std::find_if(Members.begin(), Members.end(), [&](const NamedMember &entry) { return name == QLatin1String(entry.name); });
    return found == Members.end() ? nullptr : &*found;
}

/// Both columns of the palette file.
struct Palettes {
    PaletteColours light;
    PaletteColours dark;

    Palettes()
    {
        const QStringList lines = readResource(QStringLiteral(":/farm/style/palette.txt")).split(u'\n', Qt::SkipEmptyParts);
        for (const QString &line : lines) {
            const QStringList words = line.simplified().split(u' ');
            const NamedMember *entry = memberOf(words.at(0));
            if (entry != nullptr && words.size() == 3) {
                light.*(entry->member) = QColor(words.at(1));
                dark.*(entry->member) = QColor(words.at(2));
            }
        }
    }
};

bool darkPalette = false;
std::optional<PaletteColours> ownColours;

QPalette paletteOf(const PaletteColours &colours)
{
    QPalette palette;
    const std::pair<QPalette::ColorRole, QColor> roles[] = {
        {QPalette::Window, colours.window},
        {QPalette::WindowText, colours.text},
        {QPalette::Base, colours.base},
        {QPalette::AlternateBase, colours.header},
        {QPalette::Text, colours.text},
        {QPalette::Button, colours.base},
        {QPalette::ButtonText, colours.text},
        {QPalette::BrightText, colours.danger},
        {QPalette::Highlight, colours.accent},
        {QPalette::HighlightedText, colours.onAccent},
        {QPalette::PlaceholderText, colours.muted},
        {QPalette::ToolTipBase, colours.base},
        {QPalette::ToolTipText, colours.text},
        {QPalette::Link, colours.accent},
        {QPalette::LinkVisited, colours.accent},
        {QPalette::Light, colours.base},
        {QPalette::Midlight, colours.header},
        {QPalette::Mid, colours.line},
        {QPalette::Dark, colours.border},
        {QPalette::Shadow, colours.border},
    };
    for (const auto &[role, colour] : roles) {
        palette.setColor(role, colour);
    }
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, colours.disabled);
    }
    palette.setColor(QPalette::Disabled, QPalette::Base, colours.window);
    return palette;
}

QString styleSheet()
{
    QString sheet = readResource(QStringLiteral(":/farm/style/look.qss"));
    // Longest names first, because one name may be the beginning of another.
    std::vector<NamedMember> byLength(Members.begin(), Members.end());
    std::sort(byLength.begin(), byLength.end(),
              [](const NamedMember &a, const NamedMember &b) { return qstrlen(a.name) > qstrlen(b.name); });
    for (const NamedMember &entry : byLength) {
        sheet.replace(u'@' + QLatin1String(entry.name), (Theme::colours().*(entry.member)).name());
    }
    return sheet.replace(QStringLiteral("@icons"),
                         darkPalette ? QStringLiteral(":/farm/tinted/dark") : QStringLiteral(":/farm/tinted/light"));
}

void applyColours(QApplication &application)
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(paletteOf(Theme::colours()));
    QFont font = QApplication::font();
    if (font.pointSizeF() < MinFont) {
        font.setPointSizeF(MinFont);
    }
    QApplication::setFont(font);
    application.setStyleSheet(styleSheet());
}

} // namespace

void Theme::apply(QApplication &application, bool dark)
{
    darkPalette = dark;
    ownColours.reset();
    applyColours(application);
}

void Theme::apply(QApplication &application, bool dark, const PaletteColours &own)
{
    darkPalette = dark;
    ownColours = own;
    applyColours(application);
}

bool Theme::isDark()
{
    return darkPalette;
}

const PaletteColours &Theme::colours()
{
    static const Palettes palettes;
    return ownColours ? *ownColours : darkPalette ? palettes.dark : palettes.light;
}

QColor Theme::colour(const QString &name)
{
    const NamedMember *entry = memberOf(name);
    if (entry == nullptr) {
        throw basic::RunTimeError(basic::ErrorNumber::InvalidArgument, QStringLiteral("The palette has no colour %1.").arg(name));
    }
    return colours().*(entry->member);
}

QIcon Theme::icon(const QString &name, const QString &colourName)
{
    static_cast<void>(colour(colourName));
    return QIcon(new IconEngine(IconDrawing(name), colourName));
}

void Theme::setRole(QWidget &widget, const char *role)
{
    const QVariant value = QString::fromLatin1(role);
    if (widget.property("role") != value) {
        widget.setProperty("role", value);
        widget.style()->unpolish(&widget);
        widget.style()->polish(&widget);
    }
}

} // namespace controls
