// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/StatusLine.h"

#include "platform/basic/Clock.h"
#include "shell/Icons.h"

#include <QAccessible>
#include <QLabel>

namespace
{

constexpr int IconSize = 16;
constexpr int SideMargin = 18;

} // namespace

StatusLine::StatusLine(QWidget *parent) : QStatusBar(parent), icon_(new QLabel(this)), text_(new QLabel(this))
{
    setSizeGripEnabled(false);
    setContentsMargins(SideMargin, 0, SideMargin, 0);
    icon_->setFixedWidth(IconSize);
    text_->setObjectName(QStringLiteral("statusText"));
    text_->setTextFormat(Qt::PlainText);
    addWidget(icon_);
    addWidget(text_, 1);
}

void StatusLine::showWritten(const QString &text)
{
    const QString time = basic::Clock::now().toString(QStringLiteral("HH:mm"));
    show(QStringLiteral("tick"), QStringLiteral("accent"), text + u' ' + time);
}

void StatusLine::showFailure(const QString &text)
{
    show(QStringLiteral("warning"), QStringLiteral("danger"), text);
}

QString StatusLine::text() const
{
    return text_->text();
}

void StatusLine::show(const QString &icon, const QString &colour, const QString &text)
{
    setPicture(*icon_, IconSize, icon, colour);
    text_->setText(text);
    text_->setToolTip(text);
    if (QAccessible::isActive()) {
        QAccessibleEvent alert(text_, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}
