// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/ChildScreen.h"

#include "store/clsPestMONNew.h"

#include <QLabel>
#include <QLayout>

ChildScreen::ChildScreen(ScreenHost &host, QWidget *parent) : QWidget(parent), host_(host)
{
    setAttribute(Qt::WA_StyledBackground);
}

void ChildScreen::focusFirstControl()
{
    const QWidget *focused = window()->focusWidget();
    if (focused == this || !isAncestorOf(focused)) {
        setFocus();
        focusNextChild();
    }
}

void ChildScreen::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    // Not while the layout of the screen is being set.
    QMetaObject::invokeMethod(this, &ChildScreen::fitTitle, Qt::QueuedConnection);
}

void ChildScreen::fitTitle()
{
    constexpr int smallest = 560;
    constexpr int above = 12;
    constexpr int below = 4;
    auto *title = findChild<QLabel *>(QStringLiteral("screenTitle"));
    auto *line = findChild<QLayout *>(QStringLiteral("titleLayout"));
    if (!title || !line) {
        return;
    }
    const bool fits = height() >= smallest;
    title->setVisible(fits);
    const QMargins margins = line->contentsMargins();
    line->setContentsMargins(margins.left(), fits ? above : 0, margins.right(), fits ? below : 0);
    Q_EMIT titleMoved(fits ? QString() : title->text());
}

void ChildScreen::showFailure(const QString &what, const QString &why)
{
    host_.showFailure(why.isEmpty() ? what : QStringLiteral("%1: %2").arg(what, why));
}

void ChildScreen::showStoreFailure(const QString &what)
{
    const auto &error = objPestMON().lastError();
    showFailure(what, error ? error->description() : QString());
}
