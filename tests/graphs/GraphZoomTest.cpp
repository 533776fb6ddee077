// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/GraphZoom.h"

#include "graphs/SeriesLooks.h"
#include "graphs/modGrafiek.h"
#include "platform/basic/RunTimeError.h"

#include <QTest>

class GraphZoomTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void levelsInAndOut();
    void outStraightAfterADraw();
    void scrolling();
    void colourParts();
    void seriesTypesAndTexts();
};

constexpr GraphZoom::Extent Viewport{14400, 7200};

void GraphZoomTest::levelsInAndOut()
{
    GraphZoom zoom;
    zoom.restart(Viewport);
    const std::array<double, 6> factors{1.0, 1.5, 2.5, 4.0, 6.0, 8.5};
    const auto holds = [&zoom, &factors](int level) {
        const double factor = factors[static_cast<std::size_t>(level)];
        return zoom.level() == level && zoom.size().height == qRound(7200 * factor) && zoom.size().width == qRound(14400 * factor)
            && zoom.top() == 7200 - zoom.size().height && zoom.horizontalMax() == (zoom.size().width - 14400) / 100
            && zoom.verticalMax() == (zoom.size().height - 7200) / 100;
    };
    for (int level = 1; level <= GraphZoom::HighestLevel; ++level) {
        zoom.zoomIn(Viewport);
        QVERIFY2(holds(level), qPrintable(QString::number(level)));
    }
    for (int level = GraphZoom::HighestLevel - 1; level >= 0; --level) {
        zoom.zoomOut(Viewport);
        QVERIFY2(holds(level), qPrintable(QString::number(level)));
    }
}

void GraphZoomTest::outStraightAfterADraw()
{
    GraphZoom zoom;
    zoom.restart(Viewport);
    zoom.zoomOut(Viewport);
    QCOMPARE(zoom.level(), -1);
    QCOMPARE(zoom.size().height, Viewport.height);
    QCOMPARE(zoom.top(), 0);
    zoom.zoomIn(Viewport);
    QCOMPARE(zoom.level(), 0);
    QCOMPARE(zoom.size().width, Viewport.width);
}

void GraphZoomTest::scrolling()
{
    GraphZoom zoom;
    zoom.restart(Viewport);
    zoom.zoomIn(Viewport);
    zoom.scrollHorizontally(7);
    QCOMPARE(zoom.left(), -700);
    zoom.scrollVertically(0, zoom.verticalMax(), Viewport);
    QCOMPARE(zoom.top(), 0);
    zoom.restart(Viewport);
    QCOMPARE(zoom.left(), 0);
}

void GraphZoomTest::colourParts()
{
    QCOMPARE(ColorComponent(0x123456, 1), 0x56);
    QCOMPARE(ColorComponent(0x123456, 2), 0x34);
    QCOMPARE(ColorComponent(0x123456, 3), 0x12);
    QCOMPARE(ColorComponent(0xFFFFFF, 3), 255);
    for (const std::int16_t outside : {std::int16_t{0}, std::int16_t{4}}) {
        QCOMPARE(ColorComponent(0x123456, outside), -1);
    }
    QCOMPARE(ColorComponent(0x1000000, 1), -1);
    QCOMPARE(ColorComponent(-1, 1), -1);
    QCOMPARE(ColorComponent(colourNumber(QColor(1, 2, 3)), 3), 3);
}

void GraphZoomTest::seriesTypesAndTexts()
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
    QCOMPARE(numberOf("-1"), 5);
}

QTEST_MAIN(GraphZoomTest)
#include "GraphZoomTest.moc"
