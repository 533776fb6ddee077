// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/DesktopColours.h"

#include "platform/controls/Theme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QPalette>

namespace
{

// The interface org.freedesktop.portal.Settings, version 1.
const QString Service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString Path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString Interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString Group = QStringLiteral("org.freedesktop.appearance");
const QString Key = QStringLiteral("color-scheme");

enum Preference : uint { NoPreference = 0, Dark = 1, Light = 2 };

/// Read() wraps the value in a variant of its own.
uint preferenceIn(QVariant value)
{
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value.toUInt();
}

class PortalWatcher : public QObject
{
    Q_OBJECT
public:
    explicit PortalWatcher(QApplication &application);

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void apply(uint preference);

    QApplication &application_;
    bool darkPalette_;
};

PortalWatcher::PortalWatcher(QApplication &application)
    : application_(application), darkPalette_(application.palette().color(QPalette::Window).lightness() < 128)
{
    constexpr int milliseconds = 500;
    QDBusConnection bus = QDBusConnection::sessionBus();
    uint preference = NoPreference;
    if (bus.isConnected()) {
        QDBusMessage read = QDBusMessage::createMethodCall(Service, Path, Interface, QStringLiteral("Read"));
        read << Group << Key;
        const QDBusMessage reply = bus.call(read, QDBus::Block, milliseconds);
        if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
            preference = preferenceIn(reply.arguments().constFirst());
        }
        bus.connect(Service, Path, Interface, QStringLiteral("SettingChanged"), this,
                    SLOT(settingChanged(QString, QString, QDBusVariant)));
    }
    apply(preference);
}

void PortalWatcher::settingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group == Group && key == Key) {
        apply(preferenceIn(value.variant()));
    }
}

void PortalWatcher::apply(uint preference)
{
    controls::Theme::apply(application_, preference == NoPreference ? darkPalette_ : preference == Dark);
}

} // namespace

DesktopColours::DesktopColours(QApplication &application) : watcher_(std::make_unique<PortalWatcher>(application)) {}

DesktopColours::~DesktopColours() = default;

#include "DesktopColours.moc"
