// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/WeekNumber.h"

#include <QTest>

class WeekNumberTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void weeksRunFromNewYear_data();
    void weeksRunFromNewYear();
};

void WeekNumberTest::weeksRunFromNewYear_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QDate>("yearOf");
    QTest::addColumn<int>("week");
    const auto own = [](const char *name, QDate date, int week) { QTest::newRow(name) << date << date << week; };
    own("1 January", {2026, 1, 1}, 1);
    own("7 January", {2026, 1, 7}, 1);
    own("8 January", {2026, 1, 8}, 2);
    own("31 December", {2025, 12, 31}, 53);
    own("31 December of a leap year", {2024, 12, 31}, 53);
    own("30 December of a leap year", {2024, 12, 30}, 53);
    own("29 December", {2025, 12, 29}, 52);
    QTest::newRow("day before the year") << QDate(2025, 12, 31) << QDate(2026, 6, 1) << 0;
    QTest::newRow("eight days before the year") << QDate(2025, 12, 24) << QDate(2026, 6, 1) << -1;
    QTest::newRow("later year") << QDate(2027, 1, 1) << QDate(2026, 6, 1) << 53;
    QTest::newRow("year far away") << QDate(9999, 12, 31) << QDate(2026, 6, 1) << 32767;
}

void WeekNumberTest::weeksRunFromNewYear()
{
    QFETCH(QDate, date);
    QFETCH(QDate, yearOf);
    QTEST(static_cast<int>(weekNumber(date, yearOf)), "week");
}

QTEST_APPLESS_MAIN(WeekNumberTest)
#include "WeekNumberTest.moc"
