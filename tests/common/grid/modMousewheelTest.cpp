// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/grid/modMousewheel.h"
#include "platform/controls/FlexGrid.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

using controls::FlexGrid;

/// A window with two grids and a button: which grid a wheel event scrolls.
class modMousewheelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void theGridThatLastGotTheFocusScrolls();
    void aNotchFollowsTheSystemSetting();
    void aPageAtATime();
    void aHiddenOrDisabledGridIgnoresTheWheel();
    void touchpadScrollsTheSameUpAndDown();
    void unhookedTheGridUnderThePointerScrolls();
    void aClosedWindowIsUnhooked();

private:
    static void turn(QWidget &under, int angle, Qt::ScrollPhase phase = Qt::NoScrollPhase);
    void build();

    QWidget *window_ = nullptr;
    FlexGrid *upper_ = nullptr;
    FlexGrid *lower_ = nullptr;
    QPushButton *button_ = nullptr;
    int systemLines_ = 0;
};

void modMousewheelTest::init()
{
    systemLines_ = QApplication::wheelScrollLines();
    QApplication::setWheelScrollLines(3);
    build();
}

void modMousewheelTest::build()
{
    window_ = new QWidget;
    auto *layout = new QVBoxLayout(window_);
    const auto makeGrid = [&] {
        auto *grid = new FlexGrid(window_);
        grid->setRows(100);
        layout->addWidget(grid);
        return grid;
    };
    upper_ = makeGrid();
    lower_ = makeGrid();
    button_ = new QPushButton(window_);
    layout->addWidget(button_);
    serveFocusedGrid(*window_, {upper_, lower_});
    window_->resize(400, 500);
    window_->show();
    QApplication::setActiveWindow(window_);
    upper_->setFocus();
    QVERIFY(QTest::qWaitForWindowExposed(window_));
    // The query lays the grids out.
    QCOMPARE(upper_->TopRow(), lower_->TopRow());
}

void modMousewheelTest::cleanup()
{
    delete window_;
    QApplication::setWheelScrollLines(systemLines_);
}

void modMousewheelTest::turn(QWidget &under, int angle, Qt::ScrollPhase phase)
{
    const QPointF position(5, 5);
    QWheelEvent event(position, under.mapToGlobal(position), {}, {0, angle}, Qt::NoButton, Qt::NoModifier, phase, false);
    QApplication::sendEvent(&under, &event);
}

void modMousewheelTest::theGridThatLastGotTheFocusScrolls()
{
    lower_->setFocus();
    button_->setFocus();
    turn(*upper_->viewport(), -120);
    QCOMPARE(upper_->TopRow(), 1);
    QCOMPARE(lower_->TopRow(), 4);
    upper_->setFocus();
    upper_->clearFocus();
    upper_->setFocus();
    turn(*button_, -120);
    QCOMPARE(upper_->TopRow(), 4);
    QCOMPARE(lower_->TopRow(), 4);
}

void modMousewheelTest::aNotchFollowsTheSystemSetting()
{
    QApplication::setWheelScrollLines(5);
    turn(*upper_->viewport(), -120);
    QCOMPARE(upper_->TopRow(), 6);
    turn(*upper_->viewport(), 120);
    QCOMPARE(upper_->TopRow(), 1);
}

void modMousewheelTest::aPageAtATime()
{
    QApplication::setWheelScrollLines(65535);
    turn(*upper_->viewport(), -120);
    const int page = upper_->TopRow() - 1;
    QVERIFY(page > 3);
    turn(*upper_->viewport(), 120);
    QCOMPARE(upper_->TopRow(), 1);
}

void modMousewheelTest::aHiddenOrDisabledGridIgnoresTheWheel()
{
    upper_->setEnabled(false);
    upper_->setFocus();
    turn(*lower_->viewport(), -120);
    QVERIFY(lower_->TopRow() > 1);
    const int before = lower_->TopRow();
    upper_->setEnabled(true);
    upper_->hide();
    turn(*lower_->viewport(), -120);
    QVERIFY(lower_->TopRow() > before);
    QCOMPARE(upper_->TopRow(), 1);
}

void modMousewheelTest::touchpadScrollsTheSameUpAndDown()
{
    for (int step = 0; step < 24; ++step) {
        turn(*upper_->viewport(), -15, Qt::ScrollUpdate);
    }
    QCOMPARE(upper_->TopRow(), 1 + 3 * 3);
    for (int step = 0; step < 24; ++step) {
        turn(*upper_->viewport(), 15, Qt::ScrollUpdate);
    }
    QCOMPARE(upper_->TopRow(), 1);
}

void modMousewheelTest::unhookedTheGridUnderThePointerScrolls()
{
    Unhook_Wheel(*window_);
    Unhook_Wheel(*window_);
    turn(*lower_->viewport(), -120);
    QCOMPARE(upper_->TopRow(), 1);
    QVERIFY(lower_->TopRow() > 1);
}

void modMousewheelTest::aClosedWindowIsUnhooked()
{
    window_->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    window_->show();
    turn(*lower_->viewport(), -120);
    QCOMPARE(upper_->TopRow(), 1);
    QVERIFY(lower_->TopRow() > 1);
}

QTEST_MAIN(modMousewheelTest)
#include "modMousewheelTest.moc"
