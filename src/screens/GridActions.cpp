// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/GridActions.h"

#include "platform/controls/FlexGrid.h"

#include <QAbstractButton>
#include <QAction>
#include <QShortcut>

void addFocusKey(QWidget &control, const QKeySequence &key)
{
    auto *shortcut = new QShortcut(key, &control);
    QObject::connect(shortcut, &QShortcut::activated, &control, [&control] { control.setFocus(Qt::ShortcutFocusReason); });
}

QAction *addGridAction(controls::FlexGrid &grid, const QString &text, const QList<QKeySequence> &keys)
{
    auto *action = new QAction(text, &grid);
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    action->setShortcutVisibleInContextMenu(true);
    grid.addAction(action);
    return action;
}

QAction *addGridAction(controls::FlexGrid &grid, QAbstractButton &button, const QList<QKeySequence> &keys)
{
    QAction *action = addGridAction(grid, button.text().remove(u'&'), keys);
    action->setIcon(button.icon());
    QObject::connect(action, &QAction::triggered, &button, &QAbstractButton::click);
    return action;
}
