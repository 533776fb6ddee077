// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"

#include <QLocale>
#include <QTest>

#include <bit>
#include <cmath>
#include <random>

using namespace basic;

class FormatsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void fixedRoundsHalvesAwayFromZero_data();
    void fixedRoundsHalvesAwayFromZero();
    void singlesAreRoundedFromTheirOwnText();
    void numbersAreShortAndPlain();
    void everySingleReadsBackUnchanged();
    void datesFollowThePattern_data();
    void datesFollowThePattern();
    void shortDateHasFourDigitsOfTheYear();
    void datesAreReadAsPeopleWriteThem_data();
    void datesAreReadAsPeopleWriteThem();
};

void FormatsTest::fixedRoundsHalvesAwayFromZero_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("text");
    QTest::newRow("decimal half below in binary") << 1.005 << 2 << "1.01";
    QTest::newRow("another") << 2.675 << 2 << "2.68";
    QTest::newRow("smallest half") << 0.005 << 2 << "0.01";
    QTest::newRow("negative half") << -0.005 << 2 << "-0.01";
    QTest::newRow("just below") << 0.00499999 << 2 << "0.00";
    QTest::newRow("far below") << 0.0000001 << 2 << "0.00";
    QTest::newRow("carries over") << 99.995 << 2 << "100.00";
    QTest::newRow("half to whole") << 0.5 << 0 << "1";
    QTest::newRow("two and a half") << 2.5 << 0 << "3";
    QTest::newRow("minus zero") << -0.0 << 0 << "0";
    QTest::newRow("rounds to zero without sign") << -0.001 << 2 << "0.00";
    QTest::newRow("large") << 1234567890.125 << 2 << "1234567890.13";
}

void FormatsTest::fixedRoundsHalvesAwayFromZero()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    QTEST(formatFixed(value, decimals), "text");
}

void FormatsTest::singlesAreRoundedFromTheirOwnText()
{
    QCOMPARE(formatFixedSingle(2.675F, 2), QStringLiteral("2.68"));
    QCOMPARE(formatFixedSingle(0.005F, 2), QStringLiteral("0.01"));
}

void FormatsTest::numbersAreShortAndPlain()
{
    QCOMPARE(singleText(1.1F), QStringLiteral("1.1"));
    QCOMPARE(singleText(100.0F / 3), QStringLiteral("33.333332"));
    QCOMPARE(singleText(100000.0F), QStringLiteral("100000"));
    QCOMPARE(singleText(-0.25F), QStringLiteral("-0.25"));
    QCOMPARE(singleText(-0.0F), QStringLiteral("0"));
    QCOMPARE(doubleText(0.1 + 0.2), QStringLiteral("0.3"));
    QCOMPARE(doubleText(-0.0), QStringLiteral("0"));
    QCOMPARE(doubleText(3000000000.0), QStringLiteral("3000000000"));
    QCOMPARE(doubleText(0.00001), QStringLiteral("0.00001"));
    QCOMPARE(doubleText(-1.5e20), QStringLiteral("-150000000000000000000"));
    QCOMPARE(singleText(0.00005F), QStringLiteral("0.00005"));
    QCOMPARE(singleText(1e10F), QStringLiteral("10000000000"));
    QCOMPARE(singleText(-0.000125F), QStringLiteral("-0.000125"));
}

void FormatsTest::everySingleReadsBackUnchanged()
{
    std::mt19937 random(5);
    for (int i = 0; i < 20000; ++i) {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (std::isfinite(value)) {
            const QString text = singleText(value);
            QVERIFY2(static_cast<float>(Val(text)) == value, qPrintable(text));
        }
    }
}

void FormatsTest::datesFollowThePattern_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    QTest::newRow("sortable") << "yyyy/MM/dd"
                              << "2026/03/04";
    QTest::newRow("short fields") << "d/m/yy"
                                  << "4/3/26";
    QTest::newRow("minutes by n") << "hh:nn:ss"
                                  << "07:08:09";
    QTest::newRow("m after hours is minutes") << "h:mm"
                                              << "7:08";
    QTest::newRow("month again after the day") << "hh:mm dd mm"
                                               << "07:08 04 03";
    QTest::newRow("for a query") << "mm/dd/yyyy"
                                 << "03/04/2026";
}

void FormatsTest::datesFollowThePattern()
{
    QFETCH(QString, pattern);
    QTEST(formatDate(SerialDate::fromDateTime(QDate(2026, 3, 4), QTime(7, 8, 9)), pattern), "text");
}

void FormatsTest::shortDateHasFourDigitsOfTheYear()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); // dd.MM.yy
    const QString shown = shortDate(QDate(2026, 3, 4));
    QLocale::setDefault(before);
    QCOMPARE(shown, QStringLiteral("04.03.2026"));
}

void FormatsTest::datesAreReadAsPeopleWriteThem_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("date");
    const QDate day(2026, 3, 4);
    QTest::newRow("year first") << "2026/03/04" << day;
    QTest::newRow("with hyphens and blanks") << " 2026-3-4 " << day;
    QTest::newRow("day first") << "04/03/2026" << day;
    QTest::newRow("month first when nothing else fits") << "12/31/2026" << QDate(2026, 12, 31);
    QTest::newRow("no such day") << "2026/02/30" << QDate();
    QTest::newRow("noise") << "ab/cd/efgh" << QDate();
    QTest::newRow("two-digit year") << "04/03/26" << QDate();
    QTest::newRow("empty") << "" << QDate();
}

void FormatsTest::datesAreReadAsPeopleWriteThem()
{
    QFETCH(QString, text);
    QTEST(dateFromText(text), "date");
}

QTEST_GUILESS_MAIN(FormatsTest)
#include "FormatsTest.moc"
