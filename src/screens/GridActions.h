// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

class QAbstractButton;
class QAction;
class QWidget;
namespace controls
{
class FlexGrid;
}

/// A key that focuses a control while it shows, for one without a caption that could have an access key.
void addFocusKey(QWidget &control, const QKeySequence &key);

/// Adds an action to a grid's context menu. Its keys, of which the menu shows the first, work while the grid has the focus.
QAction *addGridAction(controls::FlexGrid &grid, const QString &text, const QList<QKeySequence> &keys);
/// The same for a button of the screen: the action has its caption and icon, and clicks it.
QAction *addGridAction(controls::FlexGrid &grid, QAbstractButton &button, const QList<QKeySequence> &keys = {});
