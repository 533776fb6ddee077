// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/ImportDialog.h"

#include "platform/controls/BusyPointer.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/RedrawPause.h"
#include "screens/FitToScreen.h"
#include "screens/GridColumns.h"
#include "screens/Icons.h"
#include "screens/Shortcuts.h"
#include "ui_ImportDialog.h"

#include <algorithm>
#include <array>

namespace mainmodule
{

namespace
{

constexpr std::array<GridColumn, 6> Columns{
    {{"List", 1300}, {"", 800}, {"Name", 2000}, {"Column", 1200}, {"Before", 1700}, {"After", 1700}}};

/// The names in a new line, joined; what a changed one had and has.
struct ShownChange {
    QString column;
    QString before;
    QString after;
};

std::vector<ShownChange> shownChanges(const lists::FarmLists &stored, const lists::FarmLists &planned,
                                      const lists::Change &change)
{
    const lists::Table &table = lists::tableOf(change.list);
    std::vector<ShownChange> shown;
    QStringList texts;
    for (int column = 0; column < table.columnCount(); ++column) {
        const QString after = planned.shown(change.list, *change.after, column);
        if (!change.before) {
            texts.append(after);
        } else if (change.before->cell(column) != change.after->cell(column)) {
            shown.push_back({table.column(column).heading, stored.shown(change.list, *change.before, column), after});
        }
    }
    if (!change.before) {
        texts.removeAll(QString());
        shown.push_back({{}, {}, texts.join(QStringLiteral(", "))});
    }
    return shown;
}

} // namespace

ImportDialog::ImportDialog(ListHost &host, const lists::GivenBook &given, lists::Matching matching, QWidget *parent)
    : QDialog(parent), ui_(std::make_unique<Ui::ImportDialog>()), host_(host), given_(given), matching_(matching)
{
    ui_->setupUi(this);
    fitToScreen(*this, size());
    ui_->faultPanel->setHost(host);
    ui_->faultPanel->setHidable(false);
    ui_->splitter->setStretchFactor(0, 1);
    ui_->splitter->setStretchFactor(1, 1);
    setIcons({{ui_->cmdWrite, "save", "onacc"}, {ui_->cmdCancel, "close"}});
    ui_->chkByName->setChecked(matching == lists::Matching::ByKeyOrName);
    connect(ui_->chkByName, &QCheckBox::toggled, this, [this](bool byName) {
        matching_ = byName ? lists::Matching::ByKeyOrName : lists::Matching::ByKey;
        makePlan();
    });
    connect(ui_->cmdWrite, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    makePlan();
    countNamedRows();
    // Rows that are left out are left out on purpose.
    ui_->cmdWrite->setAutoDefault(!plan_.refuses());
    (plan_.refuses() ? ui_->cmdCancel : ui_->cmdWrite)->setFocus();
    nameKeysInTips(*this);
}

ImportDialog::~ImportDialog() = default;

lists::Planner ImportDialog::plannerFor(lists::Matching matching) const
{
    lists::Planner planner(host_.farmLists(), matching, host_.farm());
    planner.addFaults(given_.faults);
    for (const lists::GivenList &list : given_.lists) {
        planner.add(list);
    }
    return planner;
}

void ImportDialog::countNamedRows()
{
    const auto added = [this](lists::Matching matching) { return plannerFor(matching).plan().total().added; };
    if (const int named = added(lists::Matching::ByKey) - added(lists::Matching::ByKeyOrName); named > 0) {
        ui_->chkByName->setText(tr("%1 (%2 here)").arg(ui_->chkByName->text()).arg(named));
    }
}

void ImportDialog::makePlan()
{
    const controls::BusyPointer busy;
    const lists::Planner planner = plannerFor(matching_);
    plan_ = planner.plan();
    showSummary();
    const qsizetype count = static_cast<qsizetype>(plan_.changes.size());
    const QString rows = count == 1 ? tr("1 row") : tr("%1 rows").arg(count);
    ui_->cmdWrite->setText(plan_.refuses() ? tr("&Write the other %1").arg(rows) : tr("&Write %1").arg(rows));
    ui_->cmdWrite->setEnabled(count > 0);
    showChanges(planner.planned());
    ui_->faultPanel->showFaults(given_.lists, plan_.faults);
}

void ImportDialog::showSummary()
{
    QString title = lists::summary(plan_.total());
    const auto sheets = std::count_if(given_.faults.begin(), given_.faults.end(),
                                      [](const lists::Fault &fault) { return fault.refuses && fault.row == 0; });
    if (sheets > 0) {
        title += sheets == 1 ? tr("; 1 sheet cannot be read") : tr("; %1 sheets cannot be read").arg(sheets);
    }
    ui_->screenTitle->setText(title);
    QStringList parts;
    for (const lists::List list : lists::AllLists) {
        const lists::Counts &counts = plan_.counts[lists::indexOf(list)];
        if (counts.added + counts.changed + counts.refused > 0) {
            parts.append(QStringLiteral("%1: %2").arg(lists::tableOf(list).sheet, lists::summary(counts)));
        }
    }
    if (const int unchanged = plan_.total().unchanged; unchanged > 0) {
        parts.append(unchanged == 1 ? tr("1 row as it was") : tr("%1 rows as they were").arg(unchanged));
    }
    ui_->lblLists->setText(parts.join(QStringLiteral("; ")));
}

void ImportDialog::showChanges(const lists::FarmLists &planned)
{
    controls::FlexGrid &grid = *ui_->grdChanges;
    std::vector<QStringList> rows;
    for (const lists::Change &change : plan_.changes) {
        const lists::Table &table = lists::tableOf(change.list);
        const QString &name = change.after->cell(table.nameColumn);
        for (const ShownChange &shown : shownChanges(host_.farmLists(), planned, change)) {
            rows.push_back(
                {table.sheet, change.before ? tr("Changed") : tr("New"), name, shown.column, shown.before, shown.after});
        }
    }
    const controls::RedrawPause pause(grid);
    layOutList(grid, Columns, static_cast<int>(rows.size()));
    grid.setStretchColumns({2, 5});
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (int column = 0; column < grid.Cols(); ++column) {
            grid.setTextMatrix(static_cast<int>(row) + 1, column, rows[row][column]);
        }
    }
    grid.setEmptyText(rows.empty() ? tr("Nothing would change.") : QString());
}

} // namespace mainmodule
