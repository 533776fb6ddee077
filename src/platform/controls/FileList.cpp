// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/FileList.h"

#include "platform/controls/Theme.h"

#include <QDir>
#include <QKeyEvent>
#include <QPainter>

#include <utility>

namespace controls
{

FileList::FileList(QWidget *parent) : QListWidget(parent)
{
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformItemSizes(true);
    connect(this, &QListWidget::itemClicked, this, [this](const QListWidgetItem *item) {
        // A copy, because a slot may refill the list.
        const QString name = item->text();
        Q_EMIT Click(name);
    });
}

void FileList::setPath(const QString &folder)
{
    const QString chosen = currentItem() && folder == path_ ? currentItem()->text() : QString();
    path_ = folder;
    clear();
    addItems(QDir(folder).entryList(QDir::Files, QDir::Name | QDir::IgnoreCase));
    const QList<QListWidgetItem *> same = findItems(chosen, Qt::MatchExactly);
    setCurrentRow(same.isEmpty() ? 0 : row(same.front()));
}

void FileList::setEmptyText(const QString &text)
{
    emptyText_ = text;
    viewport()->update();
}

void FileList::mouseDoubleClickEvent(QMouseEvent *event)
{
    secondClick_ = true;
    event->accept();
}

void FileList::mouseReleaseEvent(QMouseEvent *event)
{
    if (std::exchange(secondClick_, false)) {
        event->accept();
        return;
    }
    QListWidget::mouseReleaseEvent(event);
}

void FileList::keyPressEvent(QKeyEvent *event)
{
    const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (opens && currentItem()) {
        const QString name = currentItem()->text();
        Q_EMIT Click(name);
        return;
    }
    QListWidget::keyPressEvent(event);
}

void FileList::paintEvent(QPaintEvent *event)
{
    QListWidget::paintEvent(event);
    if (count() == 0) {
        QPainter painter(viewport());
        painter.setPen(Theme::colours().muted);
        painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
    }
}

} // namespace controls
