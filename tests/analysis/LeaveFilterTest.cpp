// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/LeaveFilter.h"

#include "analysis/AnalysisNumbers.h"
#include "platform/basic/RunTimeError.h"

#include <QTest>

/// Which rows of the list show, and the texts of its boxes.
class LeaveFilterTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void lastCriterionDecides_data();
    void lastCriterionDecides();
    void twoDecimals_data();
    void twoDecimals();
    void leadingNumbers();
};

void LeaveFilterTest::lastCriterionDecides_data()
{
    QTest::addColumn<QList<int>>("filter");
    QTest::addColumn<int>("current");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("currentAfter");
    QTest::newRow("none shows all, the empty row too") << QList<int>{0, 0, 0, 0} << 3 << "11111" << 3;
    QTest::newRow("below zero is none") << QList<int>{-1, 0, 0, 0} << 3 << "11111" << 3;
    QTest::newRow("group") << QList<int>{2, 0, 0, 0} << 1 << "00110" << 3;
    QTest::newRow("block of another group shows") << QList<int>{2, 0, 0, 7} << 1 << "10000" << 1;
    QTest::newRow("the last criterion decides which row is current") << QList<int>{1, 0, 0, 9} << 4 << "00010" << 4;
    QTest::newRow("a current row that fails later lets the next one in") << QList<int>{1, 6, 0, 0} << 1 << "01000" << 2;
    QTest::newRow("no match leaves the current row") << QList<int>{0, 0, 5, 0} << 2 << "00000" << 2;
}

void LeaveFilterTest::lastCriterionDecides()
{
    QFETCH(QList<int>, filter);
    QFETCH(int, current);
    QFETCH(QString, shown);
    QFETCH(int, currentAfter);
    const std::vector<LeaveRowKeys> rows{{1, 5, 1, 7}, {1, 6, 2, 8}, {2, 7, 3, 8}, {2, 7, 3, 9}, {0, 0, 0, 0}};
    const FilteredRows result = filterRows(rows, {filter[0], filter[1], filter[2], filter[3]}, current);
    QString found;
    for (const bool row : result.shown) {
        found += row ? u'1' : u'0';
    }
    QCOMPARE(found, shown);
    QCOMPARE(result.currentRow, currentAfter);
}

void LeaveFilterTest::twoDecimals_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("left");
    for (const auto &[typed, left] : {std::pair("", ""), std::pair("2.675", "2.68"), std::pair("1,5", "1,5"),
                                      std::pair("12abc", "12abc"), std::pair(" 7 ", "7.00"), std::pair(".5", "0.50"),
                                      std::pair("-3.", "-3.00"), std::pair("1e3", "1e3"), std::pair(".", ".")}) {
        QTest::newRow(typed) << typed << left;
    }
}

void LeaveFilterTest::twoDecimals()
{
    QFETCH(QString, typed);
    QFETCH(QString, left);
    QCOMPARE(withTwoDecimals(typed), left);
}

void LeaveFilterTest::leadingNumbers()
{
    QCOMPARE(leadingSingle(QStringLiteral("1,5")), 1.0F);
    QCOMPARE(leadingSingle(QStringLiteral("abc")), 0.0F);
    QCOMPARE(leadingSingle(QStringLiteral("12abc")), 12.0F);
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, leadingSingle(QString(40, QLatin1Char('9'))));
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, leadingSingle(QString(400, QLatin1Char('9'))));
}

QTEST_APPLESS_MAIN(LeaveFilterTest)
#include "LeaveFilterTest.moc"
