// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/grid/CellEditor.h"

#include "platform/controls/FlexGrid.h"

#include <QTest>

using controls::FlexGrid;

/// Where the edit box comes to lie, above all over a cell that does not show.
class CellEditorTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void boxLiesOverTheCell_data();
    void boxLiesOverTheCell();
};

void CellEditorTest::boxLiesOverTheCell_data()
{
    QTest::addColumn<QPoint>("cell"); // column, row
    QTest::addColumn<QPoint>("place"); // whose cell has the same left and top edge
    QTest::newRow("first shown") << QPoint(3, 5) << QPoint(3, 5);
    QTest::newRow("further on") << QPoint(6, 8) << QPoint(6, 8);
    QTest::newRow("hidden, where the next one begins") << QPoint(4, 6) << QPoint(5, 7);
    QTest::newRow("scrolled out at the left") << QPoint(2, 8) << QPoint(3, 8);
    QTest::newRow("scrolled out at the top") << QPoint(6, 2) << QPoint(6, 5);
}

void CellEditorTest::boxLiesOverTheCell()
{
    QFETCH(QPoint, cell);
    QFETCH(QPoint, place);
    QWidget window;
    FlexGrid grid(&window);
    QWidget box(&window);
    grid.setGeometry(30, 40, 500, 300);
    grid.setRows(60);
    grid.setCols(20);
    grid.setFixedCols(1);
    grid.setColWidth(4, 0);
    grid.setRowHeight(6, 0);
    grid.setTopRow(5);
    grid.setLeftCol(3);
    grid.setCell(cell.y(), cell.x());
    Place_Cell_Editor(grid, box);
    const QPoint inset(2, 2);
    QCOMPARE(box.pos(), grid.viewport()->mapTo(&window, grid.cellRect(place.y(), place.x()).topLeft()) + inset);
}

QTEST_MAIN(CellEditorTest)
#include "CellEditorTest.moc"
