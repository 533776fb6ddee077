// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/GraphZoom.h"

#include <QTest>

class GraphZoomTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void levelsInAndOut();
    void outStraightAfterADraw();
    void anotherViewport();
    void scrolling();
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

void GraphZoomTest::anotherViewport()
{
    constexpr GraphZoom::Extent Other{9000, 9000};
    GraphZoom zoom;
    zoom.restart(Viewport);
    zoom.zoomOut(Viewport);
    zoom.refit(Other);
    QCOMPARE(zoom.size().width, Other.width);
    zoom.zoomIn(Other);
    for (int level = 1; level <= 3; ++level) {
        zoom.zoomIn(Other);
    }
    zoom.scrollHorizontally(50);
    zoom.refit(Viewport);
    QCOMPARE(zoom.size().width, 4 * Viewport.width);
    QCOMPARE(zoom.verticalMax(), 3 * Viewport.height / 100);
    for (int level = 2; level >= 0; --level) {
        zoom.zoomOut(Viewport);
    }
    QCOMPARE(zoom.size().height, Viewport.height);
    QCOMPARE(zoom.left(), 0);
    QCOMPARE(zoom.horizontalMax(), 0);
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

QTEST_MAIN(GraphZoomTest)
#include "GraphZoomTest.moc"
