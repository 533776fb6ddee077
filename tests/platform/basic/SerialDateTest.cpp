// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/SerialDate.h"

#include <QTest>

#include <limits>

using namespace basic;

class SerialDateTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void timeCountsUpwardsBeforeTheFirstDay();
    void everyDayComesBack();
    void daysOffTheCalendar_data();
    void daysOffTheCalendar();
};

void SerialDateTest::timeCountsUpwardsBeforeTheFirstDay()
{
    const SerialDate early(-1.25);
    QCOMPARE(early.date(), QDate(1899, 12, 29));
    QCOMPARE(early.time(), QTime(6, 0));
    QCOMPARE(SerialDate::fromDateTime(QDate(1899, 12, 29), QTime(6, 0)).days(), -1.25);
    QVERIFY(SerialDate::fromDate(QDate()).isZero());
    QCOMPARE(SerialDate(0.5).date(), QDate(1899, 12, 30));
    QCOMPARE(SerialDate(45000.9999999).time(), QTime(23, 59, 59));
}

void SerialDateTest::everyDayComesBack()
{
    for (QDate day(1890, 1, 1); day.year() < 2110; day = day.addDays(17)) {
        const SerialDate stored = SerialDate::fromDateTime(day, QTime(13, 14, 15));
        QCOMPARE(stored.date(), day);
        QCOMPARE(stored.time(), QTime(13, 14, 15));
    }
}

void SerialDateTest::daysOffTheCalendar_data()
{
    QTest::addColumn<double>("days");
    QTest::addColumn<QDate>("date");
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << QDate();
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << QDate();
    QTest::newRow("huge") << -1e300 << QDate();
    QTest::newRow("before the first") << -657435.0 << QDate();
    QTest::newRow("first") << -657434.5 << QDate(100, 1, 1);
    QTest::newRow("last") << 2958465.5 << QDate(9999, 12, 31);
    QTest::newRow("after the last") << 2958466.0 << QDate();
}

void SerialDateTest::daysOffTheCalendar()
{
    QFETCH(double, days);
    QTEST(SerialDate(days).date(), "date");
    QCOMPARE(SerialDate(days).time(), SerialDate(days).date().isValid() ? QTime(12, 0) : QTime(0, 0));
}

QTEST_GUILESS_MAIN(SerialDateTest)
#include "SerialDateTest.moc"
