// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/DesktopColours.h"

#include "platform/controls/Theme.h"

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QSettings>

#include <optional>

#include <windows.h>

namespace
{

struct Scheme {
    bool isDark = false;
    /// Of a contrast scheme.
    std::optional<controls::PaletteColours> colours;

    bool operator==(const Scheme &) const = default;
};

bool hasContrastScheme()
{
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) && (contrast.dwFlags & HCF_HIGHCONTRASTON);
}

QColor systemColour(int index)
{
    const DWORD colour = GetSysColor(index);
    return {GetRValue(colour), GetGValue(colour), GetBValue(colour)};
}

Scheme currentScheme()
{
    if (hasContrastScheme()) {
        const QColor window = systemColour(COLOR_WINDOW);
        const QColor text = systemColour(COLOR_WINDOWTEXT);
        const QColor accent = systemColour(COLOR_HIGHLIGHT);
        return {window.lightness() < 128,
                controls::PaletteColours{.window = window,
                                         .base = window,
                                         .header = window,
                                         .line = text,
                                         .border = text,
                                         .text = text,
                                         .muted = text,
                                         .disabled = systemColour(COLOR_GRAYTEXT),
                                         .accent = accent,
                                         .accentHover = accent,
                                         .accentPressed = accent,
                                         .soft = window,
                                         .onAccent = systemColour(COLOR_HIGHLIGHTTEXT),
                                         .danger = text}};
    }
    const QSettings settings(QStringLiteral(R"(HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Themes\Personalize)"),
                             QSettings::NativeFormat);
    return {settings.value(QStringLiteral("AppsUseLightTheme"), 1).toInt() == 0, std::nullopt};
}

class SettingsWatcher : public QObject, public QAbstractNativeEventFilter
{
public:
    explicit SettingsWatcher(QApplication &application) : application_(application), scheme_(currentScheme())
    {
        apply();
        application_.installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const UINT kind = static_cast<const MSG *>(message)->message;
        if (kind == WM_SETTINGCHANGE || kind == WM_SYSCOLORCHANGE || kind == WM_THEMECHANGED) {
            // After the toolkit has read the settings. Every window gets the message.
            QMetaObject::invokeMethod(this, &SettingsWatcher::follow, Qt::QueuedConnection);
        }
        return false;
    }

private:
    void follow()
    {
        if (const Scheme now = currentScheme(); now != scheme_) {
            scheme_ = now;
            apply();
        }
    }

    void apply()
    {
        scheme_.colours ? controls::Theme::apply(application_, scheme_.isDark, *scheme_.colours)
                        : controls::Theme::apply(application_, scheme_.isDark);
    }

    QApplication &application_;
    Scheme scheme_;
};

} // namespace

DesktopColours::DesktopColours(QApplication &application) : watcher_(std::make_unique<SettingsWatcher>(application)) {}

DesktopColours::~DesktopColours() = default;
