// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/StyleChoices.h"

#include "platform/basic/RunTimeError.h"

#include <QTest>

class StyleChoicesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void seriesTypesAndTexts();
};

void StyleChoicesTest::seriesTypesAndTexts()
{
    for (const bool solid : {true, false}) {
        for (int index = 0; index < seriesTypeTexts(solid).size(); ++index) {
            QCOMPARE(seriesTypeIndex(seriesTypeAt(index, solid).value(), solid), index);
        }
    }
    QVERIFY(!seriesTypeAt(4, true));
    QCOMPARE(static_cast<int>(seriesTypeAt(5, false).value()), 24);
    QCOMPARE(seriesTypeIndex(chart::SeriesType::Line3d, false), -1);

    QVERIFY(!markerShowsFillColour(9));
    QVERIFY(markerShowsFillColour(10));
    QVERIFY(markerShowsFillColour(15));

    QCOMPARE(twipsFromText(QStringLiteral(" 22.5 ")), 22);
    const auto numberOf = [](const char *text) {
        try {
            twipsFromText(QLatin1String(text));
        } catch (const basic::RunTimeError &error) {
            return error.number();
        }
        return 0;
    };
    QCOMPARE(numberOf("wide"), 13);
    QCOMPARE(numberOf(""), 13);
    QCOMPARE(numberOf("40000"), 6);
    // Rounded first, then measured.
    QCOMPARE(numberOf("32767.4"), 0);
    QCOMPARE(numberOf("32767.5"), 6);
    QCOMPARE(numberOf("-32768"), 5);
    QCOMPARE(numberOf("nan"), 6);
    QCOMPARE(numberOf("-1"), 5);
}

QTEST_MAIN(StyleChoicesTest)
#include "StyleChoicesTest.moc"
