// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/ShortcutsPage.h"

#include "platform/controls/Theme.h"
#include "screens/FitToScreen.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace
{

constexpr QSize PageSize(620, 560);

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
        page += QStringLiteral("<h3>%1</h3><table width=\"100%\" cellspacing=\"0\" cellpadding=\"3\">")
                    .arg(group.heading.toHtmlEscaped());
        for (const KeyLine &line : group.lines) {
            page += QStringLiteral("<tr><td width=\"190\" style=\"color:%1\">%2</td><td>%3</td></tr>")
                        .arg(controls::Theme::colours().muted.name(), line.keys.toHtmlEscaped(), line.action.toHtmlEscaped());
        }
        page += QStringLiteral("</table>");
    }
    return page;
}

} // namespace

ShortcutsPage::ShortcutsPage(const QString &screen, KeyProgram program, QWidget *parent)
    : QDialog(parent), browser_(new QTextBrowser(this))
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
    buttons->button(QDialogButtonBox::Close)->setToolTip(tr("Close (Esc)"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(browser_, 1);
    layout->addWidget(buttons);
    browser_->setFocus();
    fitToScreen(*this, PageSize);
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
