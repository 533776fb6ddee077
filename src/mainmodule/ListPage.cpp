// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/ListPage.h"

#include "mainmodule/ImportDialog.h"
#include "mainmodule/WorkbookFile.h"
#include "platform/basic/RunTimeError.h"
#include "platform/controls/Dialogs.h"
#include "platform/controls/FlexGrid.h"
#include "screens/GridActions.h"
#include "screens/Icons.h"
#include "ui_ListPage.h"

#include <QAction>
#include <QFileInfo>
#include <QShortcut>

namespace mainmodule
{

ListPage::ListPage(ListHost &host, std::unique_ptr<PageLines> lines, QWidget *parent)
    : QWidget(parent), ui_(std::make_unique<Ui::ListPage>()), host_(host)
{
    ui_->setupUi(this);
    setAttribute(Qt::WA_StyledBackground);
    grid_ = std::make_unique<ListGrid>(*ui_->grdList, host, std::move(lines));
    ui_->screenTitle->setText(title());
    ui_->grdList->setAccessibleName(title());
    ui_->chkActive->setVisible(grid_->page().hasActive());
    const bool hasStarter = shows(lists::List::Varieties) || shows(lists::List::Pests);
    ui_->cmdStarter->setVisible(hasStarter);
    ui_->faultPanel->setHost(host);
    ui_->splitter->setStretchFactor(0, 3);
    ui_->splitter->setStretchFactor(1, 1);
    setIcons({{ui_->cmdAdd, "add", "onacc"}, {ui_->cmdDelete, "delete", "danger"}, {ui_->cmdStarter, "tick"}});
    setUpActions();
    connect(ui_->txtFilter, &QLineEdit::textChanged, this, &ListPage::filterChanged);
    connect(ui_->chkActive, &QCheckBox::toggled, this, &ListPage::filterChanged);
    connect(ui_->cmdStarter, &QPushButton::clicked, this, &ListPage::starterRequested);
    connect(ui_->cmdSave, &QPushButton::clicked, this, &ListPage::saveRequested);
    connect(ui_->cmdOpen, &QPushButton::clicked, this, &ListPage::openBook);
    connect(grid_.get(), &ListGrid::faultsFound, this, &ListPage::showFaults);
    connect(grid_.get(), &ListGrid::pasteRefused, this, [this](const std::vector<lists::GivenList> &given) {
        review(tr("Paste"), {given, {}}, grid_->page().pastedMatching());
    });
}

ListPage::~ListPage() = default;

/// Buttons, keys and the grid's menu do the same; the keys work in the grid alone, so that a field keeps its own.
void ListPage::setUpActions()
{
    controls::FlexGrid &grid = *ui_->grdList;
    const auto guarded = [this](const auto &body) {
        return [this, body] {
            try {
                body();
            } catch (const basic::RunTimeError &error) {
                host_.showError(error);
            }
        };
    };
    connect(ui_->cmdAdd, &QPushButton::clicked, this, guarded([this] { grid_->startLine(); }));
    connect(ui_->cmdPaste, &QPushButton::clicked, this, guarded([this] { grid_->paste(); }));
    connect(ui_->cmdDelete, &QPushButton::clicked, this, guarded([this] { grid_->deleteLines(); }));
    connect(ui_->cmdUndo, &QPushButton::clicked, this, &ListPage::undoRequested);
    connect(ui_->cmdRedo, &QPushButton::clicked, this, &ListPage::redoRequested);
    addGridAction(grid, *ui_->cmdAdd, {Qt::Key_Insert});
    addGridAction(grid, *ui_->cmdPaste, QKeySequence::keyBindings(QKeySequence::Paste));
    QAction *clear = addGridAction(grid, tr("Empty the cells"), {Qt::Key_Delete, Qt::Key_Backspace});
    connect(clear, &QAction::triggered, this, guarded([this] { grid_->clearCells(); }));
    addGridAction(grid, *ui_->cmdDelete, {Qt::CTRL | Qt::Key_Delete});
    addGridAction(grid, *ui_->cmdUndo, {Qt::CTRL | Qt::Key_Z});
    addGridAction(grid, *ui_->cmdRedo, {Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z});
    QAction *sort = addGridAction(grid, tr("Sort by this column"), {Qt::Key_F3});
    connect(sort, &QAction::triggered, this, [this, &grid] { grid_->sortByColumn(grid.Col()); });
    QAction *all = addGridAction(grid, tr("Select all"), {Qt::CTRL | Qt::Key_A});
    connect(all, &QAction::triggered, this, [this] { grid_->selectAll(); });
    auto *filter = new QShortcut(Qt::CTRL | Qt::Key_F, this);
    connect(filter, &QShortcut::activated, this, [this] {
        ui_->txtFilter->setFocus();
        ui_->txtFilter->selectAll();
    });
}

bool ListPage::shows(lists::List list) const
{
    const bool isCrop = list == lists::List::CropGroups || list == lists::List::CropTypes;
    return grid_->page().list() == (isCrop ? lists::List::Varieties : list);
}

void ListPage::activate()
{
    showObstacle();
    if (!grid_->isEditing()) {
        grid_->arrange(grid_->arrangement());
    }
}

void ListPage::showObstacle()
{
    const lists::List list = grid_->page().list();
    const QString file = store::fileName(lists::tableOf(list).file);
    const bool readOnly = host_.farmLists().isReadOnly(list);
    ui_->lblObstacle->setText(
        tr("%1 cannot be written, so this list is only shown: the file or its folder is read-only for you.").arg(file));
    ui_->lblObstacle->setVisible(readOnly);
}

void ListPage::focusGrid()
{
    ui_->grdList->setFocus();
}

void ListPage::setUndo(bool canUndo, bool canRedo)
{
    ui_->cmdUndo->setEnabled(canUndo);
    ui_->cmdRedo->setEnabled(canRedo);
}

void ListPage::filterChanged()
{
    if (!grid_->leave()) {
        return;
    }
    Arrangement arrangement = grid_->arrangement();
    arrangement.filter = ui_->txtFilter->text().trimmed();
    arrangement.activeOnly = ui_->chkActive->isChecked();
    grid_->arrange(arrangement);
}

void ListPage::showFaults(const std::vector<lists::GivenList> &given, const std::vector<lists::Fault> &faults)
{
    ui_->faultPanel->showFaults(given, faults);
}

void ListPage::forgetDeletion()
{
    ui_->faultPanel->forgetDeletion();
}

void ListPage::openBook()
{
    if (!grid_->leave()) {
        return;
    }
    if (const std::optional<ReadFile> file = openWorkbook(host_)) {
        importBook(file->path, file->book);
    }
}

void ListPage::importBook(const QString &path, const sheets::Workbook &book)
{
    const QString name = QFileInfo(path).fileName();
    try {
        review(name, lists::givenBook(book, grid_->page().list()), lists::Matching::ByKey);
    } catch (const basic::RunTimeError &error) {
        host_.dialogs().message(QStringLiteral("%1: %2").arg(name, error.description()), {}, controls::BoxIcon::Exclamation);
    }
}

void ListPage::review(const QString &title, const lists::GivenBook &given, lists::Matching matching)
{
    ImportDialog dialog(host_, given, matching, window());
    dialog.setWindowTitle(title);
    if (dialog.exec() != QDialog::Accepted) {
        host_.showNote(tr("Nothing was written."));
        return;
    }
    const lists::Plan &plan = dialog.plan();
    const ListHost::Written written = host_.write(plan.changes, tr("%1: %2").arg(title, lists::summary(plan.total())));
    grid_->update();
    std::vector<lists::Fault> faults = plan.faults;
    for (const lists::Conflict &conflict : written.conflicts) {
        faults.push_back({conflict.change.list, title, 0, {}, {}, conflict.reason, true});
    }
    showFaults(given.lists, faults);
    focusGrid();
}

} // namespace mainmodule
