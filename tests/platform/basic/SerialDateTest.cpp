// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/SerialDate.h"

#include <QTest>

using namespace basic;

class SerialDateTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void timeCountsUpwardsBeforeTheFirstDay();
    void everyDayComesBack();
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

QTEST_GUILESS_MAIN(SerialDateTest)
#include "SerialDateTest.moc"
