// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/basic/Numbers.h"

#include "platform/basic/RunTimeError.h"

#include <QTest>

#include <limits>

using namespace basic;

class NumbersTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void valReadsTheLeadingNumber_data();
    void valReadsTheLeadingNumber();
    void assignmentRoundsHalfToEvenAndChecksTheRange();
};

void NumbersTest::valReadsTheLeadingNumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("digits then letters") << "12ab" << 12.0;
    QTest::newRow("negative") << "  -3.5" << -3.5;
    QTest::newRow("no exponent") << "1e3" << 1.0;
    QTest::newRow("second point ends it") << "1.2.3" << 1.2;
    QTest::newRow("comma ends it") << "1,5" << 1.0;
    QTest::newRow("point first") << ".5" << 0.5;
    QTest::newRow("plus") << "+7" << 7.0;
    QTest::newRow("letters") << "ab" << 0.0;
    QTest::newRow("sign alone") << "-" << 0.0;
    QTest::newRow("empty") << "" << 0.0;
}

void NumbersTest::valReadsTheLeadingNumber()
{
    QFETCH(QString, text);
    QTEST(Val(text), "value");
}

void NumbersTest::assignmentRoundsHalfToEvenAndChecksTheRange()
{
    QCOMPARE(toInteger16(0.5), std::int16_t{0});
    QCOMPARE(toInteger16(1.5), std::int16_t{2});
    QCOMPARE(toInteger16(32767.4), std::int16_t{32767});
    QCOMPARE(toLong32(-2.5), -2);
    QVERIFY_THROWS_EXCEPTION(RunTimeError, toInteger16(32767.5));
    QVERIFY_THROWS_EXCEPTION(RunTimeError, toInteger16(99999));
    QVERIFY_THROWS_EXCEPTION(RunTimeError, toLong32(2147483648.0));
    QVERIFY_THROWS_EXCEPTION(RunTimeError, toLong32(std::numeric_limits<double>::quiet_NaN()));
}

QTEST_GUILESS_MAIN(NumbersTest)
#include "NumbersTest.moc"
