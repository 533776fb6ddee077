// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/ValueScale.h"

#include <QLocale>
#include <QTest>

#include <cmath>

using namespace chart;

/// Which values and which rows get a text.
class ValueScaleTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void stepsAreRound_data();
    void stepsAreRound();
    void labelsNeverTouch_data();
    void labelsNeverTouch();
    void roundRowsKeepTheirLabels();
    void valuesAreWrittenShort();
};

void ValueScaleTest::stepsAreRound_data()
{
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("greatest");
    QTest::addColumn<bool>("whole");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::newRow("a season of counts") << 0.0 << 52.0 << true << 10.0 << 0.0 << 60.0;
    QTest::newRow("nothing but zeros") << 0.0 << 0.0 << true << 1.0 << 0.0 << 1.0;
    QTest::newRow("yes or no") << 0.0 << 1.0 << true << 1.0 << 0.0 << 1.0;
    QTest::newRow("three") << 0.0 << 3.0 << true << 1.0 << 0.0 << 3.0;
    QTest::newRow("fractions") << 0.0 << 0.7 << false << 0.1 << 0.0 << 0.7;
    QTest::newRow("below zero") << -5.0 << 12.0 << true << 5.0 << -5.0 << 15.0;
    QTest::newRow("exactly at a step") << 0.0 << 60.0 << true << 10.0 << 0.0 << 60.0;
    QTest::newRow("thousands") << 0.0 << 1234567.0 << true << 200000.0 << 0.0 << 1400000.0;
}

void ValueScaleTest::stepsAreRound()
{
    QFETCH(double, least);
    QFETCH(double, greatest);
    QFETCH(bool, whole);
    QFETCH(double, step);
    const ValueScale scale = ValueScale::over(least, greatest, whole, 356.0, 45.0);
    QTEST(scale.low, "low");
    QTEST(scale.high, "high");
    QCOMPARE(scale.ticks.front(), scale.low);
    QCOMPARE(scale.ticks.back(), scale.high);
    QCOMPARE(scale.ticks[1] - scale.ticks[0], step);
}

void ValueScaleTest::labelsNeverTouch_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("spacing");
    QTest::addColumn<int>("least");
    QTest::newRow("53 weeks fit") << 53 << 12.2 << 16.0 << 53;
    QTest::newRow("53 weeks on a small chart") << 53 << 15.0 << 9.0 << 11;
    QTest::newRow("365 days") << 365 << 42.0 << 2.3 << 9;
    QTest::newRow("1100 days on a stamp") << 1100 << 42.0 << 0.2 << 2;
    QTest::newRow("two that do not fit") << 2 << 50.0 << 20.0 << 1;
    QTest::newRow("one") << 1 << 50.0 << 20.0 << 1;
    QTest::newRow("none") << 0 << 50.0 << 20.0 << 0;
}

void ValueScaleTest::labelsNeverTouch()
{
    QFETCH(int, rows);
    QFETCH(double, width);
    QFETCH(double, spacing);
    QFETCH(int, least);
    const std::vector<int> shown = labelsThatFit(std::vector<double>(static_cast<std::size_t>(rows), width), spacing, 3.0);
    QVERIFY2(static_cast<int>(shown.size()) >= least, qPrintable(QString::number(shown.size())));
    for (std::size_t label = 1; label < shown.size(); ++label) {
        QVERIFY((shown[label] - shown[label - 1]) * spacing >= width + 3.0);
    }
    if (least > 1) {
        QCOMPARE(shown.front(), 0);
        QCOMPARE(shown.back(), rows - 1);
    }
}

void ValueScaleTest::roundRowsKeepTheirLabels()
{
    // Counted from 0: rows 1, 10, 20, 30, 40 and 53; 50 would touch the last.
    QCOMPARE(labelsThatFit(std::vector<double>(53, 30.0), 5.0, 3.0), (std::vector<int>{0, 9, 19, 29, 39, 52}));
}

void ValueScaleTest::valuesAreWrittenShort()
{
    QLocale::setDefault(QLocale(QLocale::German));
    QCOMPARE(valueText(12000.0), QStringLiteral("12000"));
    QCOMPARE(valueText(2.5), QStringLiteral("2,5"));
    QCOMPARE(valueText(-3.0), QStringLiteral("-3"));
    QLocale::setDefault(QLocale::c());
    QCOMPARE(valueText(0.1 + 0.2), QStringLiteral("0.3"));
}

QTEST_GUILESS_MAIN(ValueScaleTest)
#include "ValueScaleTest.moc"
