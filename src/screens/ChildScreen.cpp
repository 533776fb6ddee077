// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/ChildScreen.h"

#include "store/clsPestMONNew.h"

#include <QLabel>

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
    QMetaObject::invokeMethod(
        this,
        [this] {
            constexpr int smallest = 500;
            if (auto *title = findChild<QLabel *>(QStringLiteral("screenTitle"))) {
                title->setVisible(height() >= smallest);
            }
        },
        Qt::QueuedConnection);
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
