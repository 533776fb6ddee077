// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/FlexGrid.h"
#include "platform/controls/Theme.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QTest>

using controls::FlexGrid;
namespace cellColour = controls::cellColour;

/// What the grid draws: exact cell colours in both palettes, ticks, merged cells, and long lists.
class GridPainterTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cellColoursAreExact_data();
    void cellColoursAreExact();
    void whiteIsDrawnAsTheBase();
    void tickOnlyWithoutText();
    void equalNeighboursAreOneCell();
    void cellsMeetAtFractionalScales();
    void focusIsAWideEdge();
    void hiddenCurrentColumnStillShowsItsRow();
    void onlyVisibleRowsArePainted();

private:
    static QImage drawn(FlexGrid &grid, double scale = 1);
};

QImage GridPainterTest::drawn(FlexGrid &grid, double scale)
{
    grid.setFixedSize(400, 200);
    grid.ensurePolished();
    QImage image(QSize(400, 200) * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::magenta);
    grid.render(&image);
    return image;
}

void GridPainterTest::cellColoursAreExact_data()
{
    QTest::addColumn<bool>("dark");
    QTest::addColumn<int>("stored");
    QTest::addColumn<QColor>("shown");
    for (const bool dark : {false, true}) {
        const auto palette = dark ? "dark" : "light";
        QTest::addRow("yellow, %s", palette) << dark << cellColour::Yellow << QColor(0xFF, 0xFF, 0);
        QTest::addRow("red, %s", palette) << dark << cellColour::Red << QColor(0xFF, 0, 0);
        QTest::addRow("green, %s", palette) << dark << cellColour::Green << QColor(0, 0xFF, 0);
        QTest::addRow("pale yellow, %s", palette) << dark << cellColour::PaleYellow << QColor(0xFF, 0xFF, 0xC0);
    }
}

void GridPainterTest::cellColoursAreExact()
{
    QFETCH(bool, dark);
    QFETCH(int, stored);
    QFETCH(QColor, shown);
    controls::Theme::apply(*qApp, dark);
    FlexGrid grid;
    grid.setTextMatrix(1, 1, QStringLiteral("HHH"));
    grid.setCellFontBold(1, 1, true);
    grid.setCellBackColor(1, 1, stored);
    grid.setSelectedRow(1);
    const QImage image = drawn(grid);
    const QRect cell = grid.cellRect(1, 1).translated(grid.viewport()->pos());
    QCOMPARE(image.pixelColor(cell.right() - 3, cell.top() + 4), shown);
    QCOMPARE(image.pixelColor(cell.right() - 1, cell.center().y()), shown);
    bool black = false;
    for (int x = cell.left(); x < cell.right(); ++x) {
        black = black || image.pixelColor(x, cell.center().y()).lightness() < 60;
    }
    QVERIFY2(black, "text on a cell colour is black in both palettes");
}

void GridPainterTest::whiteIsDrawnAsTheBase()
{
    controls::Theme::apply(*qApp, true);
    FlexGrid grid;
    grid.setCellBackColor(1, 1, cellColour::White);
    const QImage image = drawn(grid);
    const QRect cell = grid.cellRect(1, 1).translated(grid.viewport()->pos());
    QCOMPARE(image.pixelColor(cell.center()), controls::Theme::colours().base);
    QCOMPARE(grid.CellBackColor(1, 1), std::optional<int>(cellColour::White));
    QCOMPARE(image.pixelColor(380, 190), controls::Theme::colours().window);
}

void GridPainterTest::tickOnlyWithoutText()
{
    controls::Theme::apply(*qApp, false);
    FlexGrid grid;
    const auto inked = [&] {
        const QImage image = drawn(grid);
        const QRect cell = grid.cellRect(1, 1).translated(grid.viewport()->pos()).adjusted(2, 2, -3, -3);
        int pixels = 0;
        for (int y = cell.top(); y <= cell.bottom(); ++y) {
            for (int x = cell.left(); x <= cell.right(); ++x) {
                pixels += image.pixelColor(x, y) != QColor(0xFF, 0, 0) ? 1 : 0;
            }
        }
        return pixels;
    };
    grid.setCellBackColor(1, 1, cellColour::Red);
    QVERIFY(inked() > 10);
    QCOMPARE(grid.TextMatrix(1, 1), QString());
    grid.setTicks(false);
    QCOMPARE(inked(), 0);
    // The closing row of a list stores its mark, but shows none.
    grid.setNameColumn(0);
    QVERIFY(inked() > 1000);
    grid.setTextMatrix(1, 0, QStringLiteral("Skool"));
    QCOMPARE(inked(), 0);
    QCOMPARE(grid.CellBackColor(1, 1), std::optional<int>(cellColour::Red));
}

void GridPainterTest::equalNeighboursAreOneCell()
{
    controls::Theme::apply(*qApp, false);
    FlexGrid grid;
    grid.setCols(4);
    const auto hasLineAfter = [&](int row, int col) {
        const QImage image = drawn(grid);
        const QRect cell = grid.cellRect(row, col).translated(grid.viewport()->pos());
        return image.pixelColor(cell.right(), cell.top() + 3) == controls::Theme::colours().line;
    };
    grid.setTextMatrix(0, 1, QStringLiteral("Thrips"));
    grid.setTextMatrix(0, 2, QStringLiteral("Thrips"));
    QVERIFY(hasLineAfter(0, 1));
    grid.setMergeRow(0, true);
    QVERIFY(!hasLineAfter(0, 1));
    QVERIFY(hasLineAfter(0, 2));
    grid.setTextMatrix(0, 2, QStringLiteral("Aphids"));
    QVERIFY(hasLineAfter(0, 1));
    grid.setTextMatrix(0, 1, {});
    grid.setTextMatrix(0, 2, {});
    QVERIFY2(hasLineAfter(0, 1), "empty neighbours are not merged");
    grid.setMergeCol(1, true);
    grid.setTextMatrix(0, 1, QStringLiteral("A"));
    grid.setTextMatrix(1, 1, QStringLiteral("A"));
    QVERIFY2(hasLineAfter(0, 1), "a merged column does not join the header to the cells");
}

void GridPainterTest::cellsMeetAtFractionalScales()
{
    controls::Theme::apply(*qApp, false);
    for (const double scale : {1.25, 1.5, 2.0}) {
        FlexGrid grid;
        grid.setCellBackColor(1, 0, cellColour::Green);
        grid.setCellBackColor(1, 1, cellColour::Green);
        const QImage image = drawn(grid, scale);
        const int y = static_cast<int>((grid.cellRect(1, 0).center().y() + grid.viewport()->y()) * scale);
        int others = 0;
        for (int x = static_cast<int>(20 * scale); x < static_cast<int>(180 * scale); ++x) {
            const QColor colour = image.pixelColor(x, y);
            others += colour != QColor(0, 0xFF, 0) && colour != controls::Theme::colours().line && colour != Qt::black
                    && colour != controls::Theme::colours().text
                ? 1
                : 0;
        }
        QCOMPARE(others, 0);
    }
}

void GridPainterTest::focusIsAWideEdge()
{
    for (const bool dark : {false, true}) {
        controls::Theme::apply(*qApp, dark);
        FlexGrid grid;
        grid.show();
        QVERIFY(QTest::qWaitForWindowActive(&grid));
        grid.clearFocus();
        const QImage without = drawn(grid);
        const QRect viewport = grid.viewport()->geometry();
        grid.setFocus();
        const QImage focused = drawn(grid);
        QCOMPARE(grid.viewport()->geometry(), viewport);
        for (const int x : {0, 1, 398, 399}) {
            QCOMPARE(focused.pixelColor(x, 100), controls::Theme::colours().accent);
            QVERIFY(without.pixelColor(x, 100) != controls::Theme::colours().accent);
        }
    }
}

void GridPainterTest::hiddenCurrentColumnStillShowsItsRow()
{
    controls::Theme::apply(*qApp, false);
    FlexGrid grid;
    grid.setRows(4);
    grid.setCols(4);
    grid.setFixedCols(1);
    grid.setCell(2, 1);
    grid.setColWidth(1, 0);
    grid.show();
    QVERIFY(QTest::qWaitForWindowActive(&grid));
    grid.setFocus();
    const QImage focused = drawn(grid);
    const QPoint corner = grid.cellRect(2, 2).translated(grid.viewport()->pos()).topLeft();
    QCOMPARE(focused.pixelColor(corner), controls::Theme::colours().text);
    QCOMPARE(focused.pixelColor(corner + QPoint(5, 1)), controls::Theme::colours().text);
    QCOMPARE(grid.Col(), 1);
}

void GridPainterTest::onlyVisibleRowsArePainted()
{
    FlexGrid grid;
    constexpr int rows = 50000;
    grid.setRows(rows);
    grid.setCols(9);
    grid.setMergeCol(2, true);
    for (int row = 1; row < rows; ++row) {
        grid.setTextMatrix(row, 2, QStringLiteral("same"));
        grid.setTextMatrix(row, 3, QString::number(row));
    }
    drawn(grid);
    const auto timeOf = [&](int top) {
        grid.setTopRow(top);
        QElapsedTimer timer;
        timer.start();
        drawn(grid);
        return timer.nsecsElapsed();
    };
    const qint64 atTop = std::min(timeOf(1), timeOf(1));
    const qint64 atEnd = std::min(timeOf(rows - 1), timeOf(rows - 1));
    // Painting all rows would take some hundred times longer at the end than at the top.
    QVERIFY2(atEnd < 20 * atTop, qPrintable(QStringLiteral("%1 ns against %2 ns").arg(atEnd).arg(atTop)));
    QVERIFY(grid.RowIsVisible(rows - 1));
}

QTEST_MAIN(GridPainterTest)
#include "GridPainterTest.moc"
