// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/grid/CellEditor.h"

#include "platform/controls/FlexGrid.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTest>

using controls::FlexGrid;

namespace
{

/// Records keys as "+a" and "-a", and deletes itself on the press of "q".
class KeyNotes : public QWidget
{
public:
    KeyNotes(QStringList &notes, QWidget *parent) : QWidget(parent), notes_(notes) {}

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        notes_.append(u'+' + event->text());
        if (event->text() == u"q") {
            delete this;
        }
    }
    void keyReleaseEvent(QKeyEvent *event) override { notes_.append(u'-' + event->text()); }

private:
    QStringList &notes_;
};

} // namespace

/// The position of the edit box, also over a hidden cell, and keys sent to a widget that is deleted.
class CellEditorTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void boxCoversTheCell_data();
    void boxCoversTheCell();
    void keysEndWithTheirWidget_data();
    void keysEndWithTheirWidget();
};

void CellEditorTest::boxCoversTheCell_data()
{
    QTest::addColumn<QPoint>("cell"); // column, row
    QTest::addColumn<QPoint>("expected"); // the cell with the same top left corner
    QTest::newRow("first shown") << QPoint(3, 5) << QPoint(3, 5);
    QTest::newRow("further on") << QPoint(6, 8) << QPoint(6, 8);
    QTest::newRow("hidden, where the next one begins") << QPoint(4, 6) << QPoint(5, 7);
    QTest::newRow("scrolled out at the left") << QPoint(2, 8) << QPoint(3, 8);
    QTest::newRow("scrolled out at the top") << QPoint(6, 2) << QPoint(6, 5);
}

void CellEditorTest::boxCoversTheCell()
{
    QFETCH(QPoint, cell);
    QFETCH(QPoint, expected);
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
    QCOMPARE(box.pos(), grid.viewport()->mapTo(&window, grid.cellRect(expected.y(), expected.x()).topLeft()) + inset);
}

void CellEditorTest::keysEndWithTheirWidget_data()
{
    QTest::addColumn<bool>("wait");
    QTest::newRow("at once") << true;
    QTest::newRow("queued") << false;
}

void CellEditorTest::keysEndWithTheirWidget()
{
    QFETCH(bool, wait);
    QWidget window;
    QStringList notes;
    auto *box = new KeyNotes(notes, &window);
    window.show();
    QApplication::setActiveWindow(&window);
    box->setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), box);
    Send_Keys(QStringLiteral("aqb"), wait);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(notes, (QStringList{"+a", "-a", "+q"}));
}

QTEST_MAIN(CellEditorTest)
#include "CellEditorTest.moc"
