// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/MainModuleWindow.h"

#include "common/HandOffFiles.h"
#include "mainmodule/CropLines.h"
#include "mainmodule/FarmBar.h"
#include "mainmodule/ListLines.h"
#include "mainmodule/ListPage.h"
#include "mainmodule/StarterDialog.h"
#include "mainmodule/WorkbookFile.h"
#include "platform/controls/Dialogs.h"
#include "platform/controls/Theme.h"
#include "screens/Icons.h"
#include "screens/Shortcuts.h"
#include "screens/ShortcutsPage.h"
#include "shell/FarmApplication.h"
#include "shell/ProgramFolder.h"
#include "store/Connection.h"
#include "store/Staging.h"
#include "store/lists/ListBooks.h"
#include "ui_MainModuleWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>

#include <algorithm>

using basic::RunTimeError;

namespace mainmodule
{

namespace
{

constexpr int BarIcon = 20;

QString pageOf(StartStep step)
{
    switch (step) {
    case StartStep::Farms:
        return QStringLiteral("farms");
    case StartStep::Blocks:
        return QStringLiteral("blocks");
    case StartStep::Crops:
        return QStringLiteral("crops");
    case StartStep::Plantings:
        return QStringLiteral("planted-blocks");
    case StartStep::Workers:
        return QStringLiteral("workers");
    case StartStep::Pests:
        return QStringLiteral("pests");
    case StartStep::Databases:
    case StartStep::Monitoring:
        break;
    }
    return QStringLiteral("start");
}

} // namespace

MainModuleWindow::MainModuleWindow(controls::Dialogs &dialogs, QWidget *parent)
    : QMainWindow(parent), ui_(std::make_unique<Ui::MainModuleWindow>()), dialogs_(dialogs), lists_(session_)
{
    ui_->setupUi(this);
    setWindowIcon(controls::Theme::icon(QStringLiteral("leaf")));
    setUpBar();
    setUpPages();
    setUpKeys();
    nameKeysInTips(*this);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, &MainModuleWindow::windowEntered);
}

MainModuleWindow::~MainModuleWindow()
{
    // Pages use the lists until their end, and members are destroyed before children.
    delete ui_->pageArea;
}

template <typename Body> void MainModuleWindow::guarded(Body &&body)
{
    try {
        body();
    } catch (const RunTimeError &error) {
        showError(error);
    }
}

void MainModuleWindow::setUpBar()
{
    ui_->picCon3->setAttribute(Qt::WA_StyledBackground);
    setLabelIcon(*ui_->Image4, BarIcon, QStringLiteral("exit"));
    bar_ = new FarmBar(*ui_->cmbFarm, *ui_->cmbYear, session_, this);
    connect(bar_, &FarmBar::chosen, this, &MainModuleWindow::writeHandOff);
    connect(ui_->cmdMonitoring, &QPushButton::clicked, this, [this] { guarded([this] { openMonitoring(); }); });
    connect(ui_->cmdNext, &QPushButton::clicked, this, [this] { guarded([this] { openStep(*start_->nextStep()); }); });
    connect(ui_->cmdLExit, &ExitLabel::clicked, this, &QWidget::close);
    connect(ui_->cmdLExit, &ExitLabel::MouseMove, this, [this] { ui_->cmdLExit->setHovered(true); });
    ui_->picCon3->setMouseTracking(true);
}

void MainModuleWindow::setUpPages()
{
    start_ = new StartPage(ui_->pages);
    ui_->pages->addWidget(start_);
    pages_.push_back({QStringLiteral("start"), tr("Start"), nullptr});
    connect(start_, &StartPage::stepRequested, this, [this](StartStep step) { guarded([&] { openStep(step); }); });
    const auto list = [this](lists::List which) { return new ListPage(*this, listLines(which), ui_->pages); };
    addPage(QStringLiteral("farms"), list(lists::List::Farms));
    addPage(QStringLiteral("blocks"), list(lists::List::Blocks));
    addPage(QStringLiteral("planted-blocks"), list(lists::List::Plantings));
    addPage(QStringLiteral("crops"), new ListPage(*this, cropLines(), ui_->pages));
    addPage(QStringLiteral("workers"), list(lists::List::Workers));
    addPage(QStringLiteral("pests"), list(lists::List::Pests));
    addPage(QStringLiteral("seasons"), list(lists::List::Seasons));
    for (const Page &page : pages_) {
        ui_->lstPages->addItem(page.title);
    }
    connect(ui_->lstPages, &QListWidget::currentRowChanged, this, [this](int index) { guarded([&] { pageChosen(index); }); });
}

void MainModuleWindow::addPage(const QString &name, ListPage *page)
{
    ui_->pages->addWidget(page);
    pages_.push_back({name, page->title(), page});
    connect(page, &ListPage::undoRequested, this, [this] { guarded([this] { step(true); }); });
    connect(page, &ListPage::redoRequested, this, [this] { guarded([this] { step(false); }); });
    connect(page, &ListPage::starterRequested, this, [this, page] { guarded([&] { chooseStarter(*page); }); });
    connect(page, &ListPage::saveRequested, this, [this, page] { guarded([&] { saveBook(*page); }); });
}

void MainModuleWindow::setUpKeys()
{
    auto *keys = new QPushButton(tr("Keys (F1)"), ui_->statusLine);
    keys->setObjectName(QStringLiteral("cmdKeys"));
    keys->setToolTip(tr("All keys of the program (F1)"));
    ui_->statusLine->addPermanentWidget(keys);
    connect(keys, &QPushButton::clicked, this, [this] {
        guarded([this] {
            const QString owner = currentList() ? QStringLiteral("ListPage") : QStringLiteral("StartPage");
            ShortcutsPage::openOver(this, owner, KeyProgram::MainModule);
        });
    });
    connect(new QShortcut(Qt::Key_F1, this), &QShortcut::activated, keys, &QPushButton::click);
    connect(new QShortcut(Qt::CTRL | Qt::Key_PageUp, this), &QShortcut::activated, this, [this] { stepPage(-1); });
    connect(new QShortcut(Qt::CTRL | Qt::Key_PageDown, this), &QShortcut::activated, this, [this] { stepPage(1); });
}

void MainModuleWindow::load(const QString &appPath, const QString &page)
{
    session_.AppPath = appPath;
    session_.DatabasePath = appPath + QStringLiteral("/Databases/");
    requests_ = std::make_unique<WindowRequest>(appPath, WindowRequest::Program::MainModule);
    connect(requests_.get(), &WindowRequest::requested, this, &MainModuleWindow::openRequestedPage);
    openLists();
    const bool isComplete = !farmLists().records(lists::List::Blocks).empty();
    showPage(!page.isEmpty() ? page : isComplete ? QStringLiteral("blocks") : QStringLiteral("start"));
}

void MainModuleWindow::openLists()
{
    hasDatabases_ = holdsDatabases(session_.AppPath);
    if (hasDatabases_) {
        // What the monitoring was left with, so that both programs agree from the start.
        basic::runOrIgnore([this] {
            Read_FindFarm(session_);
            Read_FindFarmID(session_);
            Read_FindYear(session_);
        });
        openListDatabases(session_);
        const QString unopened = session_.dbMain.failure() + session_.dbSpray.failure();
        if (!unopened.isEmpty()) {
            showFailure(unopened);
        }
    }
    lists_.reload();
    refresh();
}

/// All three or none.
void MainModuleWindow::makeDatabases()
{
    createDatabases(session_.AppPath + QStringLiteral("/Databases"));
    openLists();
    showStatus(tr("Three empty databases were made in %1").arg(QDir::toNativeSeparators(session_.DatabasePath)));
    start_->focusNextStep();
}

void MainModuleWindow::refresh()
{
    bar_->fill(farmLists());
    start_->showProgress(farmLists(), hasDatabases_);
    ui_->lstPages->setEnabled(hasDatabases_);
    ui_->cmdMonitoring->setEnabled(hasDatabases_);
    offerNextStep();
    for (const Page &page : pages_) {
        if (page.list) {
            page.list->setUndo(lists_.canUndo(), lists_.canRedo());
        }
    }
}

/// On the pages of lists, so that a new office need not come back to the start page after each. After the last one the
/// monitoring's own button is the next step.
void MainModuleWindow::offerNextStep()
{
    const std::optional<StartStep> next = start_->nextStep();
    isNewOffice_ = isNewOffice_ || (next && *next != StartStep::Monitoring);
    const bool isLast = isNewOffice_ && next == StartStep::Monitoring && currentList();
    controls::Theme::setRole(*ui_->cmdMonitoring, isLast ? "first" : "");
    const QString text = next ? StartPage::goOnText(*next) : QString();
    ui_->cmdNext->setText(text);
    ui_->cmdNext->setVisible(hasDatabases_ && currentList() && !text.isEmpty() && pageOf(*next) != pageName());
}

void MainModuleWindow::writeHandOff()
{
    try {
        bar_->writeHandOff();
    } catch (const RunTimeError &error) {
        showFailure(tr("The choice of farm and season was not handed over: %1").arg(error.description()));
    }
}

void MainModuleWindow::openMonitoring()
{
    if (!leavePage()) {
        return;
    }
    if (session_.CurrentFarmID == 0) {
        showNote(tr("Enter a farm first."));
        return;
    }
    writeHandOff();
    if (const QString reason = startMonitoring_ ? startMonitoring_() : QString(); !reason.isEmpty()) {
        showNote(reason);
    }
}

ListPage *MainModuleWindow::currentList() const
{
    return pages_[static_cast<std::size_t>(shownPage_)].list;
}

bool MainModuleWindow::leavePage()
{
    return !currentList() || currentList()->leave();
}

QString MainModuleWindow::pageName() const
{
    return pages_[static_cast<std::size_t>(shownPage_)].name;
}

void MainModuleWindow::showPage(const QString &name)
{
    const auto found = std::find_if(pages_.begin(), pages_.end(), [&](const Page &page) { return page.name == name; });
    const int index = found == pages_.end() || !hasDatabases_ ? 0 : static_cast<int>(found - pages_.begin());
    if (ui_->lstPages->currentRow() == index) {
        pageChosen(index);
    } else {
        ui_->lstPages->setCurrentRow(index);
    }
}

void MainModuleWindow::pageChosen(int index)
{
    if (index < 0 || (index != shownPage_ && !leavePage())) {
        // What is being typed is refused: the page is not left until it is corrected.
        const QSignalBlocker block(ui_->lstPages);
        ui_->lstPages->setCurrentRow(shownPage_);
        return;
    }
    shownPage_ = index;
    ui_->pages->setCurrentIndex(index);
    if (ListPage *page = currentList()) {
        page->activate();
        page->focusGrid();
    } else {
        start_->showProgress(farmLists(), hasDatabases_);
        start_->focusNextStep();
    }
    offerNextStep();
}

void MainModuleWindow::stepPage(int steps)
{
    if (hasDatabases_) {
        ui_->lstPages->setCurrentRow(std::clamp(shownPage_ + steps, 0, static_cast<int>(pages_.size()) - 1));
    }
}

void MainModuleWindow::openStep(StartStep step)
{
    if (step == StartStep::Databases) {
        makeDatabases();
    } else if (step == StartStep::Monitoring) {
        openMonitoring();
    } else {
        showPage(pageOf(step));
        ListPage *page = currentList();
        if (step == StartStep::Crops || step == StartStep::Pests) {
            chooseStarter(*page);
        } else {
            page->startLine();
        }
    }
}

ListHost::Written MainModuleWindow::write(const std::vector<lists::Change> &changes, const QString &done)
{
    Written written;
    try {
        written.conflicts = lists_.write(changes);
        written.done = written.conflicts.empty();
    } catch (const RunTimeError &error) {
        showFailure(tr("Not saved: %1").arg(error.description()));
        return written;
    }
    refresh();
    if (written.done) {
        showStatus(done);
    } else {
        showFailure(written.conflicts.front().reason);
    }
    return written;
}

void MainModuleWindow::step(bool undo)
{
    const std::vector<lists::Change> changes = undo ? lists_.nextUndo() : lists_.nextRedo();
    if (changes.empty() || !leavePage()) {
        return;
    }
    const auto page = std::find_if(pages_.begin(), pages_.end(),
                                   [&](const Page &one) { return one.list && one.list->shows(changes.front().list); });
    if (page != pages_.end() && page->list != currentList()) {
        showPage(page->name);
    }
    const std::vector<lists::Conflict> conflicts = undo ? lists_.undo() : lists_.redo();
    refresh();
    if (ListPage *list = currentList()) {
        list->forgetDeletion();
        list->activate();
    }
    if (!conflicts.empty()) {
        showFailure(conflicts.front().reason);
        return;
    }
    const QString rows = changes.size() == 1 ? tr("1 line") : tr("%1 lines").arg(changes.size());
    showStatus(undo ? tr("%1 taken back").arg(rows) : tr("%1 changed again").arg(rows));
}

void MainModuleWindow::chooseStarter(ListPage &page)
{
    if (!page.leave()) {
        return;
    }
    const auto kind = page.shows(lists::List::Pests) ? StarterDialog::Kind::Pests : StarterDialog::Kind::Crops;
    StarterDialog dialog(kind, farmLists(), this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    lists::Planner planner(farmLists(), lists::Matching::ByKeyOrName, farm());
    for (const lists::GivenList &list : dialog.ticked()) {
        planner.add(list);
    }
    const lists::Plan &plan = planner.plan();
    if (plan.changes.empty()) {
        showNote(tr("All of them are in the list already."));
        return;
    }
    write(plan.changes, tr("%1 lines added").arg(plan.changes.size()));
    page.activate();
    page.focusGrid();
}

void MainModuleWindow::saveBook(const ListPage &page)
{
    const auto list =
        std::find_if(lists::AllLists.begin(), lists::AllLists.end(), [&](lists::List one) { return page.shows(one); });
    saveWorkbook(*this, tr("Save as workbook"), QStringLiteral("Farm lists.xlsx"), WorkbookOrCsvFilter, [&](const QString &path) {
        if (path.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive)) {
            lists::writeCsv(farmLists(), *list, path);
        } else {
            lists::writeBook(farmLists(), path);
        }
    });
}

/// What another program wrote meanwhile shows when the window is entered again.
void MainModuleWindow::windowEntered(Qt::ApplicationState state)
{
    if (state != Qt::ApplicationActive) {
        windowLeft_ = true;
        return;
    }
    const bool entered = windowLeft_ && QApplication::activeModalWidget() == nullptr;
    windowLeft_ = false;
    const bool isEditing = currentList() && currentList()->isEditing();
    if (!entered || isEditing) {
        return;
    }
    guarded([this] {
        if (hasDatabases_) {
            lists_.reload();
            refresh();
        } else {
            // They may have been imported meanwhile.
            openLists();
        }
        if (ListPage *page = currentList()) {
            page->refresh();
        }
    });
}

void MainModuleWindow::openRequestedPage(const QString &page)
{
    bringToFront(*this);
    if (!page.isEmpty() && QApplication::activeModalWidget() == nullptr) {
        guarded([&] { showPage(page); });
    }
}

void MainModuleWindow::showStatus(const QString &text)
{
    ui_->statusLine->showWritten(text);
}

void MainModuleWindow::showFailure(const QString &text)
{
    ui_->statusLine->showFailure(text);
}

void MainModuleWindow::showNote(const QString &text)
{
    ui_->statusLine->showNote(text);
}

void MainModuleWindow::showError(const RunTimeError &error)
{
    dialogs_.message(errorText(error), {}, controls::BoxIcon::Critical);
}

QString MainModuleWindow::statusText() const
{
    return ui_->statusLine->text();
}

/// Everything complete is stored; the rest is asked for.
void MainModuleWindow::closeEvent(QCloseEvent *event)
{
    int unfinished = leavePage() ? 0 : 1;
    for (const Page &page : pages_) {
        unfinished += page.list ? page.list->unfinishedLines() : 0;
    }
    const QString text = unfinished == 1 ? tr("One line is not complete and therefore not saved.")
                                         : tr("%1 lines are not complete and therefore not saved.").arg(unfinished);
    const bool isOpen = unfinished > 0
        && dialogs_.question(text + u' ' + tr("Close all the same?"), {}, controls::Answer::No) == controls::Answer::No;
    if (isOpen) {
        event->ignore();
        return;
    }
    event->accept();
}

} // namespace mainmodule
