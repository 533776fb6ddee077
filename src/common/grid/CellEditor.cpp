// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/grid/CellEditor.h"

#include "platform/controls/FlexGrid.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

#include <memory>

namespace
{

void sendKey(const QPointer<QWidget> &target, int key, const QString &text, bool wait)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        // The press may close what it was sent to.
        if (!target) {
            return;
        }
        auto event = std::make_unique<QKeyEvent>(type, key, Qt::NoModifier, text);
        if (wait) {
            QApplication::sendEvent(target, event.get());
        } else {
            QApplication::postEvent(target, event.release());
        }
    }
}

} // namespace

void Place_Cell_Editor(const controls::FlexGrid &grid, QWidget &box)
{
    const QPoint inset(2, 2);
    const QPoint corner = grid.viewport()->mapTo(&grid, grid.cellOrigin(grid.Row(), grid.Col())) + inset;
    box.move(box.parentWidget() == &grid ? corner : grid.mapTo(box.parentWidget(), corner));
}

void Send_Keys(const QString &keys, bool wait)
{
    const QPointer<QWidget> target = QApplication::focusWidget();
    if (!target) {
        return;
    }
    if (keys == QLatin1String("{TAB}")) {
        sendKey(target, Qt::Key_Tab, QStringLiteral("\t"), wait);
    } else if (keys == QLatin1String("{ENTER}")) {
        sendKey(target, Qt::Key_Return, QStringLiteral("\r"), wait);
    } else {
        for (const QChar character : keys) {
            sendKey(target, 0, QString(character), wait);
        }
    }
}
