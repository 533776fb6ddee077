// SPDX-License-Identifier: GPL-3.0-or-later
#include "UiDriver.h"

#include "platform/controls/FlexGrid.h"
#include "platform/controls/ItemCombo.h"

#include <QApplication>
#include <QCheckBox>
#include <QRadioButton>
#include <QTest>
#include <QTextStream>

#include <algorithm>
#include <cstdlib>

using controls::FlexGrid;
using controls::ItemCombo;

QWidget *UiDriver::findWidget(const char *name) const
{
    // The menu and a screen, or two screens while one is being closed, may have controls of the same name; the visible one is
    // meant.
    const auto all = window_.findChildren<QWidget *>(QLatin1String(name));
    const auto shown = std::find_if(all.begin(), all.end(), [](const QWidget *widget) { return widget->isVisible(); });
    return shown != all.end() ? *shown : all.value(0);
}

void *UiDriver::missing(const char *name)
{
    QTextStream(stderr) << "The window has no control named " << name << Qt::endl;
    std::exit(EXIT_FAILURE);
}

void UiDriver::click(const char *name) const
{
    auto &control = find<QWidget>(name);
    // A tick box answers on its box and caption alone, not on the rest of its line.
    const bool tick = qobject_cast<QCheckBox *>(&control) || qobject_cast<QRadioButton *>(&control);
    constexpr int OnTheBox = 8;
    QTest::mouseClick(&control, Qt::LeftButton, {}, tick ? QPoint(OnTheBox, control.height() / 2) : control.rect().center());
}

void UiDriver::clickCell(const char *grid, int row, int col) const
{
    auto &cells = find<FlexGrid>(grid);
    cells.showCell(row, col);
    QTest::mouseClick(cells.viewport(), Qt::LeftButton, {}, cells.cellRect(row, col).center());
}

void UiDriver::doubleClickCell(const char *grid, int row, int col) const
{
    clickCell(grid, row, col);
    auto &cells = find<FlexGrid>(grid);
    QTest::mouseDClick(cells.viewport(), Qt::LeftButton, {}, cells.cellRect(row, col).center());
}

void UiDriver::key(Qt::Key key) const
{
    if (QWidget *target = QApplication::focusWidget()) {
        QTest::keyClick(target, key);
    }
}

void UiDriver::type(const QString &text) const
{
    for (const QChar character : text) {
        // The first key may move the focus, to a cell's edit box say.
        if (QWidget *target = QApplication::focusWidget()) {
            QTest::keyClicks(target, QString(character));
        }
    }
}

bool UiDriver::choose(const char *combo, const QString &text) const
{
    auto &list = find<ItemCombo>(combo);
    list.setFocus();
    for (int step = 0; step <= list.ListCount() && list.Text() != text; ++step) {
        QTest::keyClick(&list, Qt::Key_Down);
    }
    return list.Text() == text;
}

int UiDriver::findRow(const char *grid, int col, const QString &text) const
{
    const auto &cells = find<FlexGrid>(grid);
    for (int row = 1; row < cells.Rows(); ++row) {
        if (cells.TextMatrix(row, col) == text) {
            return row;
        }
    }
    return -1;
}
