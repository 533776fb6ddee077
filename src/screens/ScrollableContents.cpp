// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/ScrollableContents.h"

#include <QApplication>
#include <QBoxLayout>
#include <QScrollArea>
#include <QScrollBar>

namespace
{

class ContentsArea : public QScrollArea
{
public:
    ContentsArea(QWidget *parent, Scrolling scrolling) : QScrollArea(parent), scrolling_(scrolling)
    {
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        if (scrolling == Scrolling::DownOnly) {
            setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        }
        connect(verticalScrollBar(), &QScrollBar::rangeChanged, this,
                [this](int, int most) { setViewportMargins(0, 0, most > 0 ? BarGap : 0, 0); });
        connect(qApp, &QApplication::focusChanged, this, [this](const QWidget *, QWidget *now) {
            if (now && widget()->isAncestorOf(now)) {
                ensureWidgetVisible(now);
            }
        });
    }

    QSize minimumSizeHint() const override
    {
        const QSize smallest = QScrollArea::minimumSizeHint();
        return scrolling_ == Scrolling::DownOnly ? QSize(fullWidth(widget()->minimumSizeHint()), smallest.height()) : smallest;
    }
    QSize sizeHint() const override
    {
        const QSize whole = widget()->sizeHint();
        return scrolling_ == Scrolling::DownOnly ? QSize(fullWidth(whole), whole.height()) : QScrollArea::sizeHint();
    }

private:
    int fullWidth(const QSize &contents) const { return contents.width() + BarGap + verticalScrollBar()->sizeHint().width(); }

    static constexpr int BarGap = 8;
    Scrolling scrolling_;
};

} // namespace

void makeScrollable(QBoxLayout &page, QLayout &contents, Scrolling scrolling)
{
    const int index = page.indexOf(&contents);
    const int stretch = page.stretch(index);
    auto *area = new ContentsArea(page.parentWidget(), scrolling);
    auto *inner = new QWidget(area);
    page.removeItem(&contents);
    contents.setParent(nullptr);
    inner->setLayout(&contents);
    area->setWidget(inner);
    // The page's background shows through.
    area->viewport()->setAutoFillBackground(false);
    inner->setAutoFillBackground(false);
    page.insertWidget(index, area, stretch);
}
