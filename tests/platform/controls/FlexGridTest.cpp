// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/FlexGrid.h"
#include "platform/basic/RunTimeError.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <array>

using controls::FlexGrid;
namespace cellColour = controls::cellColour;

/// Cells, counting, scrolling, keys and mouse of the grid.
class FlexGridTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void textRemovesTheValue();
    void clearPreservesSizes();
    void unpaintedCellHasNoColour();
    void linesOutOfRangeRaiseNine();
    void fewerRowsClampTheCurrentCell();
    void twipsBecomePixels();
    void sharingColumnsHoldTheirText();
    void hiddenRowsPreserveTheirNumber();
    void topRowStopsWhereTheLastRowFits();
    void showCellScrollsAsLittleAsNeeded();
    void hidingRowsAboveLeavesTheTopRow();
    void keysSkipHiddenAndFixed_data();
    void keysSkipHiddenAndFixed();
    void frozenRowsDoNotScroll();
    void settersAreSilent();
    void pressSetsTheCellBeforeTheFocusMoves();
    void doubleClickNamesThePressedCell();
    void fixedCellsTakeNoClicks();
    void otherKeysGoToTheScreenFirst();
    void screenReaderGetsTheColour();
    void copiesCellsRowsAndAll();
    void contextMenuOffersTheActions();

private:
    /// 3 fixed columns of which two hidden, 2 fixed rows, 20 more rows, 4 value columns of which one hidden; shown.
    static void fill(FlexGrid &grid);
};

void FlexGridTest::fill(FlexGrid &grid)
{
    grid.setRows(22);
    grid.setCols(7);
    grid.setFixedRows(2);
    grid.setFixedCols(3);
    grid.setColWidth(0, 0);
    grid.setColWidth(1, 0);
    grid.setColWidth(2, 500);
    grid.setColWidth(4, 0);
    grid.setRowHeight(0, 400);
    grid.setTextMatrix(1, 2, QStringLiteral("Point"));
    grid.setTextMatrix(0, 3, QStringLiteral("Red scale"));
    grid.setTextMatrix(1, 3, QStringLiteral("Cnt"));
    for (int row = 2; row < 22; ++row) {
        grid.setTextMatrix(row, 2, QString::number(row - 1));
    }
    grid.setCell(2, 3);
    grid.setFixedSize(302, 302);
    grid.show();
}

void FlexGridTest::textRemovesTheValue()
{
    FlexGrid grid;
    grid.setCellValue(1, 1, QDate(2026, 5, 4));
    QCOMPARE(grid.cellValue(1, 1).toDate(), QDate(2026, 5, 4));
    grid.setTextMatrix(1, 1, QStringLiteral("x"));
    QVERIFY(!grid.cellValue(1, 1).isValid());

    grid.setCellValue(1, 1, 7);
    grid.setCols(1);
    grid.setCols(2);
    QVERIFY(!grid.cellValue(1, 1).isValid());
    QCOMPARE(grid.TextMatrix(1, 1), QString());
}

void FlexGridTest::clearPreservesSizes()
{
    FlexGrid grid;
    fill(grid);
    grid.setMergeRow(0, true);
    grid.setColAlignment(3, controls::CellAlignment::Centre);
    grid.setCellBackColor(5, 3, cellColour::Red);
    grid.Clear();
    QCOMPARE(grid.Rows(), 22);
    QCOMPARE(grid.ColWidth(2), 500);
    QCOMPARE(grid.RowHeight(0), 400);
    QCOMPARE(grid.TextMatrix(1, 2), QString());
    QVERIFY(!grid.MergeRow(0));
    QCOMPARE(grid.colAlignment(3), controls::CellAlignment::Default);
    QVERIFY(!grid.CellBackColor(5, 3));
}

void FlexGridTest::unpaintedCellHasNoColour()
{
    FlexGrid grid;
    QVERIFY(!grid.CellBackColor(1, 0));
    grid.setCellBackColor(1, 0, cellColour::White);
    QCOMPARE(grid.CellBackColor(1, 0), std::optional<int>(cellColour::White));
    QVERIFY(!grid.CellBackColor(1, 1));
}

void FlexGridTest::linesOutOfRangeRaiseNine()
{
    FlexGrid grid;
    const auto numberOf = [](auto body) {
        try {
            body();
        } catch (const basic::RunTimeError &error) {
            return error.number();
        }
        return 0;
    };
    QCOMPARE(numberOf([&] { grid.TextMatrix(2, 0); }), 9);
    QCOMPARE(numberOf([&] { grid.setTextMatrix(0, -1, {}); }), 9);
    QCOMPARE(numberOf([&] { grid.setRow(2); }), 9);
    QCOMPARE(numberOf([&] { grid.setRowHeight(-1, 0); }), 9);
    QCOMPARE(numberOf([&] { grid.setTopRow(2); }), 9);
}

void FlexGridTest::fewerRowsClampTheCurrentCell()
{
    FlexGrid grid;
    fill(grid);
    grid.setCell(21, 6);
    grid.setRows(3);
    grid.setCols(4);
    QCOMPARE(grid.Row(), 2);
    QCOMPARE(grid.Col(), 3);
    grid.setRows(0);
    QCOMPARE(grid.Rows(), 0);
    QVERIFY(grid.grab().width() > 0);
}

void FlexGridTest::twipsBecomePixels()
{
    FlexGrid grid;
    fill(grid);
    QCOMPARE(grid.cellRect(1, 2), QRect(0, 40, 50, 24));
    QCOMPARE(grid.cellRect(2, 5), QRect(50 + 96, 64, 96, 24));
    QVERIFY(grid.cellRect(2, 4).isEmpty());
    grid.setColWidth(5, 1001);
    QCOMPARE(grid.ColWidth(5), 1001);
    QCOMPARE(grid.cellRect(2, 5).width(), 100);
    grid.setStretchColumns({6});
    grid.setColWidth(6, 100);
    QCOMPARE(grid.ColWidth(6), 100);
    QTRY_COMPARE(grid.cellRect(1, 6).right(), grid.viewport()->width() - 1);
    // Too wide a column gives way.
    grid.setColWidth(6, 4000);
    QTRY_COMPARE(grid.cellRect(1, 6).right(), grid.viewport()->width() - 1);
}

void FlexGridTest::sharingColumnsHoldTheirText()
{
    FlexGrid grid;
    grid.setCols(3);
    grid.setRowHeight(0, 450);
    grid.setTextMatrix(0, 0, QStringLiteral("Clay content(%)"));
    grid.setTextMatrix(1, 0, QStringLiteral("7"));
    grid.setTextMatrix(1, 1, QStringLiteral("1234567.89"));
    grid.setTextMatrix(1, 2, QStringLiteral("A remark that is much longer than what a small grid can show of it"));
    grid.setColAlignment(1, controls::CellAlignment::Right);
    grid.setStretchColumns({0, 1, 2});
    grid.setFixedSize(400, 200);
    grid.show();
    QFont bold = grid.font();
    bold.setBold(true);
    const int heading = QFontMetrics(bold).horizontalAdvance(QStringLiteral("content(%)"));
    const int number = grid.fontMetrics().horizontalAdvance(QStringLiteral("1234567.89"));
    const auto widths = [&grid] {
        return std::array{grid.cellRect(1, 0).width(), grid.cellRect(1, 1).width(), grid.cellRect(1, 2).width()};
    };
    QVERIFY(widths()[0] > heading && widths()[1] > number);
    QCOMPARE(grid.cellRect(1, 2).right(), grid.viewport()->width() - 1);
    // With less space the remark gives way, never the number or the heading.
    grid.setFixedWidth(heading + number + 150);
    QTRY_COMPARE(grid.cellRect(1, 2).right(), grid.viewport()->width() - 1);
    QVERIFY(widths()[0] > heading && widths()[1] > number);
    // A grid that is too narrow for all scrolls by whole columns.
    grid.setFixedWidth(heading + number + 60);
    QTRY_VERIFY(grid.horizontalScrollBar()->maximum() > 0);
    QVERIFY(widths()[0] > heading && widths()[1] > number);
    QVERIFY(grid.cellRect(1, 2).isEmpty());
    QVERIFY(!grid.cellAt(QPoint(grid.viewport()->width() - 1, grid.viewport()->height() - 1)));
}

void FlexGridTest::hiddenRowsPreserveTheirNumber()
{
    FlexGrid grid;
    fill(grid);
    for (int row = 3; row < 21; ++row) {
        grid.setRowHeight(row, 0);
    }
    QVERIFY(!grid.RowIsVisible(10));
    QVERIFY(grid.RowIsVisible(21));
    QCOMPARE(grid.cellRect(21, 3).top(), grid.cellRect(2, 3).bottom() + 1);
    QCOMPARE(grid.cellAt(QPoint(60, 64 + 24 + 5)), std::optional(std::pair(21, 3)));
    QCOMPARE(grid.TextMatrix(21, 2), QStringLiteral("20"));
    grid.setTopRow(10);
    QCOMPARE(grid.TopRow(), 2);
}

void FlexGridTest::topRowStopsWhereTheLastRowFits()
{
    FlexGrid grid;
    fill(grid);
    QVERIFY(grid.RowIsVisible(2));
    QVERIFY(!grid.RowIsVisible(21));
    grid.setTopRow(21);
    QVERIFY(grid.RowIsVisible(21));
    QVERIFY(grid.TopRow() < 21);
    const QRect last = grid.cellRect(21, 3);
    QVERIFY(last.bottom() < grid.viewport()->height());
    QVERIFY(last.bottom() > grid.viewport()->height() - 24);
    QVERIFY(grid.cellRect(2, 3).isEmpty());
    QVERIFY(!grid.cellRect(0, 3).isEmpty());
}

void FlexGridTest::showCellScrollsAsLittleAsNeeded()
{
    FlexGrid grid;
    fill(grid);
    const int fitting = grid.cellAt(QPoint(60, grid.viewport()->height() - 25))->first;
    grid.showCell(fitting, 3);
    QCOMPARE(grid.TopRow(), 2);
    QSignalSpy scrolled(&grid, &FlexGrid::Scroll);
    grid.showCell(fitting + 1, 3);
    QCOMPARE(grid.TopRow(), 3);
    grid.showCell(2, 3);
    QCOMPARE(grid.TopRow(), 2);
    QCOMPARE(scrolled.size(), 2);
}

void FlexGridTest::hidingRowsAboveLeavesTheTopRow()
{
    FlexGrid grid;
    fill(grid);
    grid.setTopRow(6);
    grid.setRowHeight(3, 0);
    grid.setRowHeight(4, 0);
    QCOMPARE(grid.TopRow(), 6);
    grid.setRowHeight(6, 0);
    QCOMPARE(grid.TopRow(), 7);
}

void FlexGridTest::keysSkipHiddenAndFixed_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("control");
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<QPoint>("to");
    // Points are (column, row). Column 4 and rows 5, 6 and 21 are hidden.
    QTest::newRow("right over a hidden column") << int(Qt::Key_Right) << false << QPoint(3, 2) << QPoint(5, 2);
    QTest::newRow("left stops at the fixed columns") << int(Qt::Key_Left) << false << QPoint(3, 2) << QPoint(3, 2);
    QTest::newRow("down over hidden rows") << int(Qt::Key_Down) << false << QPoint(3, 4) << QPoint(3, 7);
    QTest::newRow("down from a hidden row") << int(Qt::Key_Down) << false << QPoint(3, 5) << QPoint(3, 7);
    QTest::newRow("up from a hidden row") << int(Qt::Key_Up) << false << QPoint(3, 6) << QPoint(3, 4);
    QTest::newRow("up stops at the fixed rows") << int(Qt::Key_Up) << false << QPoint(3, 2) << QPoint(3, 2);
    QTest::newRow("from a hidden column down") << int(Qt::Key_Down) << false << QPoint(4, 2) << QPoint(5, 3);
    QTest::newRow("home") << int(Qt::Key_Home) << false << QPoint(6, 9) << QPoint(3, 9);
    QTest::newRow("end") << int(Qt::Key_End) << false << QPoint(3, 9) << QPoint(6, 9);
    QTest::newRow("first cell") << int(Qt::Key_Home) << true << QPoint(6, 9) << QPoint(3, 2);
    QTest::newRow("last cell") << int(Qt::Key_End) << true << QPoint(3, 2) << QPoint(6, 20);
    QTest::newRow("page up ends at the top") << int(Qt::Key_PageUp) << false << QPoint(3, 4) << QPoint(3, 2);
}

void FlexGridTest::keysSkipHiddenAndFixed()
{
    QFETCH(int, key);
    QFETCH(bool, control);
    QFETCH(QPoint, from);
    QFETCH(QPoint, to);
    FlexGrid grid;
    fill(grid);
    for (const int row : {5, 6, 21}) {
        grid.setRowHeight(row, 0);
    }
    grid.setCell(from.y(), from.x());
    QSignalSpy moved(&grid, &FlexGrid::cellMoved);
    QTest::keyClick(&grid, static_cast<Qt::Key>(key), control ? Qt::ControlModifier : Qt::NoModifier);
    QCOMPARE(QPoint(grid.Col(), grid.Row()), to);
    QCOMPARE(moved.size(), from == to ? 0 : 1);
    QVERIFY(!grid.cellRect(grid.Row(), grid.Col()).isEmpty());
}

void FlexGridTest::frozenRowsDoNotScroll()
{
    FlexGrid grid;
    fill(grid);
    grid.setFrozenRows(1);
    QCOMPARE(grid.TopRow(), 3);
    const QRect before = grid.cellRect(2, 3);
    grid.setTopRow(21);
    QCOMPARE(grid.cellRect(2, 3), before);
    QVERIFY(grid.cellRect(3, 3).isEmpty());
    QVERIFY(grid.RowIsVisible(2) && grid.RowIsVisible(21));
    QCOMPARE(grid.cellRect(grid.TopRow(), 3).top(), before.bottom() + 1);
    // They are selected as other rows are.
    QSignalSpy clicks(&grid, &FlexGrid::Click);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, before.center());
    QCOMPARE(clicks.size(), 1);
    QTest::keyClick(&grid, Qt::Key_Down);
    QCOMPARE(grid.Row(), 3);
    QCOMPARE(grid.TopRow(), 3);
    QTest::keyClick(&grid, Qt::Key_Up);
    QTest::keyClick(&grid, Qt::Key_Up);
    QCOMPARE(grid.Row(), 2);
    QTest::keyClick(&grid, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(&grid, Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(grid.Row(), 2);
}

void FlexGridTest::settersAreSilent()
{
    FlexGrid grid;
    fill(grid);
    QSignalSpy clicks(&grid, &FlexGrid::Click);
    QSignalSpy moves(&grid, &FlexGrid::cellMoved);
    grid.setCell(20, 5);
    QCOMPARE(grid.TopRow(), 2);
    grid.setText(QStringLiteral("3"));
    grid.setRows(5);
    QCOMPARE(clicks.size() + moves.size(), 0);
}

void FlexGridTest::pressSetsTheCellBeforeTheFocusMoves()
{
    QWidget window;
    QVBoxLayout layout(&window);
    FlexGrid grid;
    QLineEdit box;
    layout.addWidget(&grid);
    layout.addWidget(&box);
    fill(grid);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    box.setFocus();
    QVERIFY(box.hasFocus());
    std::optional<std::pair<int, int>> seenWhenLeft;
    const auto leaving =
        connect(qApp, &QApplication::focusChanged, &grid, [&] { seenWhenLeft = std::pair(grid.Row(), grid.Col()); });
    QSignalSpy clicks(&grid, &FlexGrid::Click);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.cellRect(4, 5).center());
    QCOMPARE(seenWhenLeft, std::optional(std::pair(4, 5)));
    QCOMPARE(clicks.size(), 1);
    QVERIFY(grid.hasFocus());
    disconnect(leaving);
}

void FlexGridTest::doubleClickNamesThePressedCell()
{
    FlexGrid grid;
    fill(grid);
    QSignalSpy doubles(&grid, &FlexGrid::DblClick);
    // Below the last whole row there is no cell.
    const QPoint below(60, grid.viewport()->height() - 3);
    QVERIFY(!grid.cellAt(below));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, below);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, below);
    QCOMPARE(doubles.size(), 0);
    const QPoint position = grid.cellRect(4, 3).center();
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, position);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, position);
    QCOMPARE(doubles.size(), 1);
    QCOMPARE(doubles.at(0).at(0).toInt(), 4);
    QCOMPARE(grid.Row(), 4);
}

void FlexGridTest::fixedCellsTakeNoClicks()
{
    FlexGrid grid;
    fill(grid);
    QSignalSpy clicks(&grid, &FlexGrid::Click);
    for (const QPoint position : {QPoint(60, 10), QPoint(60, 50), QPoint(10, 100), QPoint(10, 10)}) {
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, position);
    }
    QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, grid.cellRect(3, 3).center());
    QCOMPARE(clicks.size(), 0);
    QCOMPARE(grid.Row(), 2);
}

void FlexGridTest::otherKeysGoToTheScreenFirst()
{
    FlexGrid grid;
    fill(grid);
    grid.setKeyClicks(FlexGrid::KeyClick::SpaceAndF2);
    QStringList keys;
    bool take = false;
    connect(&grid, &FlexGrid::KeyDown, this, [&](QKeyEvent *event) {
        keys += event->text();
        event->setAccepted(take);
    });
    QSignalSpy clicks(&grid, &FlexGrid::Click);
    QTest::keyClick(&grid, Qt::Key_Space);
    QTest::keyClick(&grid, Qt::Key_F2);
    QTest::keyClick(&grid, Qt::Key_7);
    QCOMPARE(clicks.size(), 2);
    take = true;
    QTest::keyClick(&grid, Qt::Key_Space);
    QCOMPARE(clicks.size(), 2);
    QCOMPARE(keys.join(u'|'), QStringLiteral(" ||7| "));
}

void FlexGridTest::screenReaderGetsTheColour()
{
    FlexGrid grid;
    fill(grid);
    grid.setTextMatrix(4, 3, QStringLiteral("7"));
    grid.setCellBackColor(4, 3, cellColour::Yellow);
    grid.setCell(4, 3);
    auto *table = QAccessible::queryAccessibleInterface(&grid)->tableInterface();
    QVERIFY(table != nullptr);
    QAccessibleInterface *cell = table->cellAt(4, 3);
    QCOMPARE(cell->text(QAccessible::Name), QStringLiteral("Point 3, Red scale Cnt, 7, yellow"));
    QCOMPARE(cell->text(QAccessible::Value), QStringLiteral("7"));
    QCOMPARE(cell->role(), QAccessible::Cell);
    QVERIFY(cell->state().selected);
    QCOMPARE(table->cellAt(1, 3)->role(), QAccessible::ColumnHeader);
    QVERIFY(table->cellAt(4, 4)->state().invisible);
    QCOMPARE(QAccessible::queryAccessibleInterface(&grid)->focusChild(), cell);

    grid.setCellDescriber([](int row, int) { return QStringLiteral("Row %1 done").arg(row); });
    QCOMPARE(cell->text(QAccessible::Name), QStringLiteral("Row 4 done"));
    grid.setRows(3);
    QVERIFY(!cell->isValid());
    QVERIFY(table->cellAt(4, 3) == nullptr);
}

void FlexGridTest::copiesCellsRowsAndAll()
{
    FlexGrid grid;
    fill(grid);
    const auto copied = [&grid](Qt::KeyboardModifiers held = {}) {
        QTest::keyClick(&grid, Qt::Key_C, held | Qt::ControlModifier);
        return QGuiApplication::clipboard()->text();
    };
    grid.setTextMatrix(4, 3, QStringLiteral("7"));
    grid.setTextMatrix(4, 4, QStringLiteral("hidden"));
    grid.setTextMatrix(4, 5, QStringLiteral("two\nlines\there"));
    grid.setTextMatrix(5, 3, QStringLiteral("8"));
    grid.setCell(4, 3);
    QCOMPARE(copied(), QStringLiteral("7"));
    QTest::keyClick(&grid, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(copied(), QStringLiteral("7\ttwo lines here\n8\t"));
    // A move without Shift ends the selection.
    QTest::keyClick(&grid, Qt::Key_Left);
    QCOMPARE(copied(), QStringLiteral("8"));
    grid.setSelectedRow(4);
    QCOMPARE(copied(), QStringLiteral("3\t7\ttwo lines here\t"));
    grid.setCellCopyText([](int row, int) { return QString::number(row); });
    QCOMPARE(copied(), QStringLiteral("3\t4\t4\t4"));
    QVERIFY(copied(Qt::ShiftModifier).startsWith(QStringLiteral("\tRed scale\t\t\nPoint\tCnt\t\t\n1\t2\t2\t2\n")));
}

void FlexGridTest::contextMenuOffersTheActions()
{
    FlexGrid grid;
    fill(grid);
    auto *action = new QAction(QStringLiteral("Edit"), &grid);
    grid.addAction(action);
    QSignalSpy triggered(action, &QAction::triggered);
    QSignalSpy moved(&grid, &FlexGrid::cellMoved);
    QStringList texts;
    QTimer::singleShot(0, this, [&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        for (const QAction *entry : menu->actions()) {
            texts += entry->text().section(u'\t', 0, 0);
        }
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    const QPoint position = grid.cellRect(4, 5).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, position, grid.viewport()->mapToGlobal(position));
    QApplication::sendEvent(grid.viewport(), &event);
    QCOMPARE(texts, (QStringList{"Edit", "", "Copy", "Copy all with headings"}));
    QCOMPARE(triggered.size(), 1);
    QCOMPARE(moved.size(), 1);
    QCOMPARE(QPoint(grid.Col(), grid.Row()), QPoint(5, 4));
}

QTEST_MAIN(FlexGridTest)
#include "FlexGridTest.moc"
