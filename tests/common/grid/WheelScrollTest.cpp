// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/grid/WheelScroll.h"

#include <QTest>

/// Partial notches, the sign of the amount, and the limits of the system setting.
class WheelScrollTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aNotchScrollsByTheSystemSetting_data();
    void aNotchScrollsByTheSystemSetting();
    void smallStepsForwardAreCarried();
    void everyStepBackwardScrolls();
};

void WheelScrollTest::aNotchScrollsByTheSystemSetting_data()
{
    QTest::addColumn<int>("turn");
    QTest::addColumn<int>("setting");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("times");
    QTest::newRow("three lines up") << 120 << 3 << 0 << 3;
    QTest::newRow("one line down") << -120 << 1 << 1 << 1;
    QTest::newRow("no lines are three") << 120 << 0 << 0 << 3;
    QTest::newRow("32 lines") << -120 << 32 << 1 << 32;
    QTest::newRow("33 lines are three") << -120 << 33 << 1 << 3;
    QTest::newRow("just below a page") << 120 << 65534 << 0 << 3;
    QTest::newRow("a page up") << 120 << 65535 << 2 << 1;
    QTest::newRow("-1 is a page, down") << -120 << -1 << 3 << 1;
    QTest::newRow("two notches at once scroll once") << 240 << 3 << 0 << 3;
}

void WheelScrollTest::aNotchScrollsByTheSystemSetting()
{
    QFETCH(int, turn);
    QFETCH(int, setting);
    QFETCH(int, code);
    QFETCH(int, times);
    std::int32_t remainder = 0;
    const std::uint16_t amount = wheelAmount(turn);
    const auto scroll = takeWheel(remainder, isForward(amount), amount, setting);
    QVERIFY(scroll.has_value());
    QCOMPARE(static_cast<int>(scroll->code), code);
    QCOMPARE(scroll->times, times);
}

void WheelScrollTest::smallStepsForwardAreCarried()
{
    std::int32_t remainder = 0;
    for (int step = 0; step < 7; ++step) {
        QVERIFY(!takeWheel(remainder, true, 17, 3));
    }
    QCOMPARE(remainder, 119);
    QVERIFY(takeWheel(remainder, true, 17, 3));
    QCOMPARE(remainder, 16);
}

void WheelScrollTest::everyStepBackwardScrolls()
{
    std::int32_t remainder = 0;
    const std::uint16_t notch = wheelAmount(-120);
    QCOMPARE(notch, 65416);
    QVERIFY(!isForward(notch));
    QCOMPARE(takeWheel(remainder, false, notch, 3), (WheelScroll{ScrollCode::LineDown, 3}));
    QCOMPARE(remainder, 65416 % 120);
    QCOMPARE(takeWheel(remainder, false, wheelAmount(-1), 3), (WheelScroll{ScrollCode::LineDown, 3}));
    QCOMPARE(remainder, (65416 % 120 + 65535) % 120);
}

QTEST_MAIN(WheelScrollTest)
#include "WheelScrollTest.moc"
