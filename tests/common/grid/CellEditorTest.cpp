// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/grid/CellEditor.h"

#include "platform/controls/FlexGrid.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTest>

using controls::FlexGrid;

namespace
{

/// Takes keys down as "+a" and "-a", and ends itself on the press of "q".
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

/// Where the edit box comes to lie, above all over a cell that does not show, and what becomes of keys sent to one that ends.
class CellEditorTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void boxLiesOverTheCell_data();
    void boxLiesOverTheCell();
    void keysEndWithWhatTheyWereSentTo_data();
    void keysEndWithWhatTheyWereSentTo();
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

void CellEditorTest::keysEndWithWhatTheyWereSentTo_data()
{
    QTest::addColumn<bool>("wait");
    QTest::newRow("at once") << true;
    QTest::newRow("queued") << false;
}

void CellEditorTest::keysEndWithWhatTheyWereSentTo()
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
