// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/Icons.h"

#include "platform/controls/Theme.h"

#include <QAbstractButton>
#include <QEvent>
#include <QIcon>
#include <QLabel>

void setIcons(std::initializer_list<ButtonIcon> icons)
{
    for (const ButtonIcon &entry : icons) {
        entry.button->setIcon(controls::Theme::icon(QLatin1String(entry.icon), QLatin1String(entry.colour)));
    }
}

namespace
{

/// Draws the icon of its label again when the palette changes.
class LabelIcon : public QObject
{
public:
    LabelIcon(QLabel &label, const QIcon &icon, int side) : QObject(&label), label_(label), icon_(icon), side_(side)
    {
        label.installEventFilter(this);
        show();
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
            show();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void show() { label_.setPixmap(icon_.pixmap(QSize(side_, side_), label_.devicePixelRatioF())); }

    QLabel &label_;
    QIcon icon_;
    int side_;
};

const QString LabelIconName = QStringLiteral("labelIcon");

} // namespace

void setLabelIcon(QLabel &label, int side, const QString &icon, const QString &colour)
{
    clearLabelIcon(label);
    auto *shown = new LabelIcon(label, controls::Theme::icon(icon, colour), side);
    shown->setObjectName(LabelIconName);
}

void clearLabelIcon(QLabel &label)
{
    delete label.findChild<QObject *>(LabelIconName, Qt::FindDirectChildrenOnly);
    label.setPixmap({});
}
