// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/DesktopColours.h"
#include "platform/controls/Theme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QProcess>
#include <QTest>
#include <QThread>

namespace
{

/// Answers in a thread of its own, since a program cannot answer its own blocking call.
class FakePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    std::atomic<uint> preference = 0;

public Q_SLOTS:
    QDBusVariant Read(const QString &, const QString &)
    {
        return QDBusVariant(QVariant::fromValue(QDBusVariant(preference.load())));
    }
};

} // namespace

/// The desktop's preference at start, and its change while the program runs.
class DesktopColoursTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void preferenceIsUsedAtStart_data();
    void preferenceIsUsedAtStart();
    void changeIsFollowed();

private:
    void announce(const QString &key, uint value);

    QProcess daemon_;
    QThread thread_;
    FakePortal portal_;
};

void DesktopColoursTest::initTestCase()
{
    daemon_.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    QVERIFY(daemon_.waitForReadyRead());
    const QString address = QString::fromUtf8(daemon_.readLine()).trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8());
    portal_.moveToThread(&thread_);
    thread_.start();
    QDBusConnection bus = QDBusConnection::connectToBus(address, QStringLiteral("portal"));
    QVERIFY(bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    QVERIFY(bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), &portal_, QDBusConnection::ExportAllSlots));
}

void DesktopColoursTest::cleanupTestCase()
{
    QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
    thread_.quit();
    thread_.wait();
    daemon_.kill();
    daemon_.waitForFinished();
}

void DesktopColoursTest::preferenceIsUsedAtStart_data()
{
    QTest::addColumn<uint>("preference");
    QTest::addColumn<bool>("dark");
    QTest::newRow("none: the palette's") << 0U << false;
    QTest::newRow("dark") << 1U << true;
    QTest::newRow("light") << 2U << false;
}

void DesktopColoursTest::preferenceIsUsedAtStart()
{
    QFETCH(uint, preference);
    controls::Theme::apply(*qApp, false);
    portal_.preference = preference;
    const DesktopColours colours(*qApp);
    QTEST(controls::Theme::isDark(), "dark");
}

void DesktopColoursTest::announce(const QString &key, uint value)
{
    QDBusMessage signal =
        QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                   QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
    signal << QStringLiteral("org.freedesktop.appearance") << key << QVariant::fromValue(QDBusVariant(value));
    QVERIFY(QDBusConnection(QStringLiteral("portal")).send(signal));
}

void DesktopColoursTest::changeIsFollowed()
{
    controls::Theme::apply(*qApp, false);
    portal_.preference = 2;
    const DesktopColours colours(*qApp);
    announce(QStringLiteral("color-scheme"), 1);
    QTRY_VERIFY(controls::Theme::isDark());
    QCOMPARE(QApplication::palette().color(QPalette::Window), controls::Theme::colours().window);
    announce(QStringLiteral("accent-color"), 2);
    announce(QStringLiteral("color-scheme"), 1);
    announce(QStringLiteral("color-scheme"), 2);
    QTRY_VERIFY(!controls::Theme::isDark());
}

QTEST_MAIN(DesktopColoursTest)
#include "DesktopColoursTest.moc"
