// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/ShortcutsPage.h"

#include "platform/controls/Theme.h"
#include "screens/FitToScreen.h"

#include <QDialogButtonBox>
#include <QFrame>
#include <QPainter>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace
{

constexpr QSize PageSize(700, 560);

/// Sort key of a group on the page; groups with the same key stay in the order of the table.
int orderOf(const KeyGroup &group, const QString &screen)
{
    const std::array<QString, 5> first{screen, QStringLiteral("Everywhere"), QStringLiteral("Grid"),
                                       QStringLiteral("MDI_Monitoring"), QStringLiteral("MainModuleWindow")};
    return static_cast<int>(std::find(first.begin(), first.end(), group.owner) - first.begin());
}

QString markup(const std::vector<KeyGroup> &groups)
{
    QString page;
    for (const KeyGroup &group : groups) {
        page += QStringLiteral("<h3>%1</h3><table width=\"100%\" cellspacing=\"0\" cellpadding=\"0\">")
                    .arg(group.heading.toHtmlEscaped());
        for (const KeyLine &line : group.lines) {
            page += QStringLiteral("<tr><td width=\"190\" style=\"color:%1; padding-top:3px; padding-bottom:3px\">%2</td>"
                                   "<td style=\"padding-top:3px; padding-bottom:3px\">%3</td></tr>")
                        .arg(controls::Theme::colours().muted.name(), line.keys.toHtmlEscaped(), line.action.toHtmlEscaped());
        }
        page += QStringLiteral("</table>");
    }
    return page;
}

/// Shows whole lines only: what the lower edge would cut is left out.
class LineBrowser : public QTextBrowser
{
public:
    using QTextBrowser::QTextBrowser;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QTextBrowser::paintEvent(event);
        const int edge = viewport()->height();
        int top = edge;
        for (const int x : {0, viewport()->width() / 2}) {
            const QRect line = cursorRect(cursorForPosition(QPoint(x, edge - 1)));
            top = line.bottom() >= edge ? std::min(top, line.top()) : top;
        }
        QPainter(viewport()).fillRect(0, top, viewport()->width(), edge - top, controls::Theme::colours().window);
    }
};

} // namespace

ShortcutsPage::ShortcutsPage(const QString &screen, KeyProgram program, QWidget *parent)
    : QDialog(parent), browser_(new LineBrowser(this))
{
    setWindowTitle(tr("Keys"));
    std::vector<KeyGroup> groups = keyGroups();
    std::erase_if(groups, [program](const KeyGroup &group) {
        const bool isShared = group.owner == QLatin1String("Everywhere") || group.owner == QLatin1String("Grid");
        return group.program != program && !isShared;
    });
    std::stable_sort(groups.begin(), groups.end(),
                     [&](const KeyGroup &one, const KeyGroup &other) { return orderOf(one, screen) < orderOf(other, screen); });
    browser_->setFrameShape(QFrame::NoFrame);
    browser_->setAccessibleName(windowTitle());
    browser_->setHtml(markup(groups));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *close = buttons->button(QDialogButtonBox::Close);
    close->setText(tr("&Close"));
    close->setIcon(controls::Theme::icon(QStringLiteral("close")));
    close->setToolTip(tr("Close (Esc)"));
    auto *rule = new QFrame(this);
    rule->setProperty("role", QStringLiteral("rule"));
    rule->setFixedHeight(1);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(browser_, 1);
    layout->addWidget(rule);
    layout->addWidget(buttons);
    browser_->setFocus();
    fitToScreen(*this, PageSize);
    if (parent != nullptr) {
        fitInto(*parent->window());
    }
}

/// In the middle of the window, with its edges in sight.
void ShortcutsPage::fitInto(const QWidget &window)
{
    constexpr int edge = 24;
    constexpr int titleBar = 24;
    const QRect frame = window.frameGeometry();
    resize(size().boundedTo(window.size() - QSize(2 * edge, 2 * edge + titleBar)));
    move(frame.center().x() - width() / 2, frame.y() + (frame.height() - height() - titleBar) / 2);
}

void ShortcutsPage::openOver(QWidget *window, const QString &screen, KeyProgram program)
{
    auto *page = new ShortcutsPage(screen, program, window);
    page->setAttribute(Qt::WA_DeleteOnClose);
    page->open();
}

QString ShortcutsPage::text() const
{
    return browser_->toPlainText();
}
