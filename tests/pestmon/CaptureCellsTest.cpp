// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/CaptureCells.h"

#include "platform/basic/RunTimeError.h"
#include "platform/controls/CellColours.h"

#include <QTest>

namespace capture = pestmon::capture;
namespace cellColour = controls::cellColour;

class CaptureCellsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void columnsMapToTheirPest();
    void typedTextBecomesACell_data();
    void typedTextBecomesACell();
    void totalsShowZeroDifferently();
    void totalFollowsByDifference();
    void numbersBeyondTheFieldAreRefused();
    void neighboursFollowTheRows();
};

void CaptureCellsTest::columnsMapToTheirPest()
{
    constexpr int Pests = 3;
    QCOMPARE(capture::columnsFor(Pests), 15);
    int values = 0;
    for (int col = -1; col <= capture::columnsFor(Pests); ++col) {
        if (const auto column = capture::pestColumn(col, Pests)) {
            QCOMPARE(capture::valueColumn(column->pest, column->value), col);
            ++values;
        }
    }
    QCOMPARE(values, Pests * capture::ValuesPerPest);
    QVERIFY(!capture::pestColumn(capture::keyColumn(2), Pests));
    QCOMPARE(capture::valueColumn(1, 1), capture::FirstValueColumn);
}

void CaptureCellsTest::typedTextBecomesACell_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("pointText");
    QTest::addColumn<bool>("pointColoured");
    QTest::addColumn<QString>("totalText");
    QTest::addColumn<int>("value");
    QTest::newRow("a count") << "7"
                             << "7" << true << "7" << 7;
    QTest::newRow("digits before letters") << "12ab"
                                           << "12" << true << "12" << 12;
    QTest::newRow("letters") << "ab"
                             << "0" << false << "" << 0;
    QTest::newRow("nothing") << ""
                             << "0" << false << "" << 0;
    QTest::newRow("half rounds up") << "2.5"
                                    << "3" << true << "3" << 3;
    QTest::newRow("a fraction is not zero") << "0.4"
                                            << "0" << true << "0" << 0;
    QTest::newRow("negative") << "-3"
                              << "-3" << true << "-3" << -3;
    QTest::newRow("largest") << "32767"
                             << "32767" << true << "32767" << 32767;
}

void CaptureCellsTest::typedTextBecomesACell()
{
    QFETCH(QString, typed);
    QFETCH(bool, pointColoured);
    const capture::CellDisplay point = capture::typedPoint(typed);
    QTEST(point.text, "pointText");
    QTEST(static_cast<int>(point.value), "value");
    QCOMPARE(point.colour, pointColoured ? cellColour::Yellow : cellColour::White);
    const capture::CellDisplay total = capture::typedTotal(typed);
    QTEST(total.text, "totalText");
    QTEST(static_cast<int>(total.value), "value");
    QCOMPARE(total.colour, pointColoured ? cellColour::Green : cellColour::White);
}

void CaptureCellsTest::totalsShowZeroDifferently()
{
    QCOMPARE(capture::storedTotal(0).text, QStringLiteral("0"));
    QCOMPARE(capture::changedTotal(0).text, QString());
    QCOMPARE(capture::storedTotal(0).colour, cellColour::White);
    QCOMPARE(capture::changedTotal(-1).colour, cellColour::Green);
}

void CaptureCellsTest::totalFollowsByDifference()
{
    QCOMPARE(capture::runningTotal(10, 3, 5), std::int16_t(12));
    QCOMPARE(capture::runningTotal(7, 7, 0), std::int16_t(0));
    // A typed total is the base, even if it differs from the sum of the points.
    QCOMPARE(capture::runningTotal(0, 4, 1), std::int16_t(-3));
}

void CaptureCellsTest::numbersBeyondTheFieldAreRefused()
{
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, capture::typedPoint(QStringLiteral("99999")));
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, capture::typedTotal(QStringLiteral("-40000")));
    QVERIFY_THROWS_EXCEPTION(basic::RunTimeError, capture::runningTotal(32767, 0, 1));
}

void CaptureCellsTest::neighboursFollowTheRows()
{
    using capture::CellPosition;
    constexpr int pests = 2;
    constexpr int lastRow = capture::FirstPointRow + 1;
    std::vector<CellPosition> path;
    for (auto cell = std::optional(CellPosition{capture::TotalRow, capture::valueColumn(1, 1)}); cell;
         cell = capture::neighbourCell(*cell, pests, lastRow, capture::Direction::Next)) {
        path.push_back(*cell);
    }
    QCOMPARE(path.size(), std::size_t(6));
    // Back to the first point, never to its total.
    std::size_t index = path.size() - 1;
    for (auto cell = std::optional(path.back());
         (cell = capture::neighbourCell(*cell, pests, lastRow, capture::Direction::Previous));) {
        QVERIFY(*cell == path[--index]);
    }
    QCOMPARE(index, std::size_t(2));
    QVERIFY(!capture::neighbourCell({capture::FirstPointRow, capture::PointColumn}, pests, lastRow, capture::Direction::Next));
}

QTEST_APPLESS_MAIN(CaptureCellsTest)
#include "CaptureCellsTest.moc"
