// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/ScrollableContents.h"

#include <QBoxLayout>
#include <QScrollArea>

void makeScrollable(QBoxLayout &page, QLayout &contents)
{
    const int index = page.indexOf(&contents);
    const int stretch = page.stretch(index);
    auto *area = new QScrollArea(page.parentWidget());
    auto *inner = new QWidget(area);
    page.removeItem(&contents);
    contents.setParent(nullptr);
    inner->setLayout(&contents);
    area->setWidget(inner);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    // The page's background shows through.
    area->viewport()->setAutoFillBackground(false);
    inner->setAutoFillBackground(false);
    page.insertWidget(index, area, stretch);
}
