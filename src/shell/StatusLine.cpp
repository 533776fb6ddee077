// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/StatusLine.h"

#include "platform/basic/Clock.h"
#include "screens/Icons.h"

#include <QAccessible>
#include <QLabel>
#include <QPainter>
#include <QStyle>

namespace
{

/// A sentence elided to the available width; it requires none.
class ElidedLabel : public QLabel
{
public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, width());
        style()->drawItemText(&painter, rect(), static_cast<int>(alignment()) | Qt::TextSingleLine, palette(), isEnabled(), shown,
                              foregroundRole());
    }
};

constexpr int IconSize = 16;
constexpr int LeftMargin = 22;
constexpr int SideMargin = 18;

} // namespace

StatusLine::StatusLine(QWidget *parent) : QStatusBar(parent), icon_(new QLabel(this)), text_(new ElidedLabel(this))
{
    setSizeGripEnabled(false);
    setContentsMargins(LeftMargin, 0, SideMargin, 0);
    icon_->setFixedWidth(IconSize);
    text_->setObjectName(QStringLiteral("statusText"));
    text_->setTextFormat(Qt::PlainText);
    addWidget(icon_);
    addWidget(text_, 1);
}

void StatusLine::showWritten(const QString &text)
{
    if (text.isEmpty()) {
        clear();
        return;
    }
    const QString time = basic::Clock::now().toString(QStringLiteral("HH:mm"));
    show(QStringLiteral("tick"), QStringLiteral("accent"), text + QStringLiteral(" \u00b7 ") + time);
}

void StatusLine::showFailure(const QString &text)
{
    show(QStringLiteral("warning"), QStringLiteral("danger"), text);
}

void StatusLine::showNote(const QString &text)
{
    clearLabelIcon(*icon_);
    icon_->hide();
    setText(text);
}

void StatusLine::clear()
{
    showNote(QString());
}

QString StatusLine::text() const
{
    return text_->text();
}

void StatusLine::show(const QString &icon, const QString &colour, const QString &text)
{
    setLabelIcon(*icon_, IconSize, icon, colour);
    icon_->show();
    setText(text);
}

void StatusLine::setText(const QString &text)
{
    text_->setText(text);
    text_->setAccessibleName(text);
    text_->setToolTip(text);
    if (QAccessible::isActive() && !text.isEmpty()) {
        QAccessibleEvent alert(text_, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}
