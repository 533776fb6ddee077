// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/modGeneral.h"

#include "platform/basic/RunTimeError.h"

#include <QTest>

class modGeneralTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void columnLetters();
    void offsetsGoRight();
    void percentages_data();
    void percentages();
    void matchesAreListed();
    void oneSeparatorIsStripped();
};

void modGeneralTest::columnLetters()
{
    QCOMPARE(Column_Number(QStringLiteral("A")), 1);
    QCOMPARE(Column_Number(QStringLiteral("z")), 26);
    QCOMPARE(Column_Number(QStringLiteral("aa")), 27);
    QCOMPARE(Column_Number(QStringLiteral("pz")), 442);
    QCOMPARE(Column_Number(QStringLiteral("qa")), 0);
    QCOMPARE(Column_Name(0, true), QStringLiteral("a"));
    QCOMPARE(Column_Name(441, false), QStringLiteral("PZ"));
    QCOMPARE(Column_Name(442, false), QString());
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, Column_Name(443, false));
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, Column_Name(-1, false));
}

void modGeneralTest::offsetsGoRight()
{
    int offset = 2;
    QCOMPARE(Column_Offset(QStringLiteral("C"), offset), QStringLiteral("E"));
    offset = -2;
    QCOMPARE(Next_Column(QStringLiteral("c"), offset), QStringLiteral("E"));
    QCOMPARE(offset, 2);
    offset = 1;
    QCOMPARE(Column_Offset(QStringLiteral("z"), offset), QStringLiteral("AA"));
    offset = 2;
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, Column_Offset(QStringLiteral("pz"), offset));
}

void modGeneralTest::percentages_data()
{
    QTest::addColumn<double>("part");
    QTest::addColumn<double>("whole");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << 1.0 << 3.0 << 1 << "33.3";
    QTest::newRow("half to even") << 1.0 << 8.0 << 0 << "12";
    QTest::newRow("above the limit") << 150.0 << 100.0 << 0 << "100";
    QTest::newRow("of nothing") << 1.0 << 0.0 << 0 << "0";
    QTest::newRow("nothing of nothing") << 0.0 << 0.0 << 0 << "0";
    QTest::newRow("no decimals below zero") << 1.0 << 2.0 << -1 << "0";
}

void modGeneralTest::percentages()
{
    QFETCH(double, part);
    QFETCH(double, whole);
    QFETCH(int, decimals);
    QTEST(Percent_Text(part, whole, decimals, 100.0, 100.0), "text");
}

void modGeneralTest::matchesAreListed()
{
    QCOMPARE(Test_RegExp(QStringLiteral("is."), QStringLiteral("IS1 is2 x")),
             QStringLiteral(
                 "Match found at position 0. Match Value is 'IS1'.\r\nMatch found at position 4. Match Value is 'is2'.\r\n"));
    QCOMPARE(Test_RegExp(QStringLiteral("q"), QStringLiteral("abc")), QStringLiteral("Failed"));
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, Test_RegExp(QStringLiteral("("), QStringLiteral("abc")));
}

void modGeneralTest::oneSeparatorIsStripped()
{
    QCOMPARE(Strip_Comma(QStringLiteral(" a, b,, "), QStringLiteral(",")), QStringLiteral("a, b,"));
    QCOMPARE(Strip_Comma(QStringLiteral("a"), QStringLiteral(",")), QStringLiteral("a"));
    QCOMPARE(Strip_Comma(QString(), QStringLiteral(",")), QString());
    QCOMPARE(Strip_Comma(QStringLiteral("a"), QString()), QStringLiteral("a"));
}

QTEST_APPLESS_MAIN(modGeneralTest)
#include "modGeneralTest.moc"
