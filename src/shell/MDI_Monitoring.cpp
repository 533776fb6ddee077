// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/MDI_Monitoring.h"

#include "common/FarmLock.h"
#include "common/HandOffFiles.h"
#include "platform/basic/Permissions.h"
#include "platform/basic/TextFiles.h"
#include "platform/controls/DatePicker.h"
#include "platform/controls/Dialogs.h"
#include "platform/controls/Theme.h"
#include "platform/dao/Workspace.h"
#include "screens/ChildScreen.h"
#include "screens/Icons.h"
#include "screens/ListFillers.h"
#include "screens/ProgressPicture.h"
#include "screens/Shortcuts.h"
#include "screens/ShortcutsPage.h"
#include "shell/FarmApplication.h"
#include "shell/ProgramFolder.h"
#include "store/Backups.h"
#include "store/Connection.h"
#include "store/Upgrades.h"
#include "ui_MDI_Monitoring.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QLabel>
#include <QShortcut>
#include <QTimer>

#include <algorithm>

using basic::runOrIgnore;
using basic::RunTimeError;

namespace
{

constexpr int BarIcon = 20;

} // namespace

MDI_Monitoring::MDI_Monitoring(controls::Dialogs &dialogs, std::vector<MenuEntry> entries, QWidget *parent)
    : QMainWindow(parent), ui_(std::make_unique<Ui::MDI_Monitoring>()), dialogs_(dialogs), objPestMON_(session_),
      dailyBackup_(session_), desktop_(*this)
{
    ui_->setupUi(this);
    // In the status line, where showing and hiding it moves nothing.
    Picture4_ = new ProgressPicture(this);
    ui_->statusLine->addPermanentWidget(Picture4_);
    Picture4_->hide();
    setWindowIcon(controls::Theme::icon(QStringLiteral("pest-monitoring")));
    setUpBar();
    setUpKeys();
    ui_->picPro->setEntries(std::move(entries));
    nameKeysInTips(*this);
    connect(ui_->picPro, &MenuPanel::entryClicked, this, [this](const MenuEntry &entry) { guarded([&] { openEntry(entry); }); });
    connect(ui_->picPro, &MenuPanel::closeClicked, this, &MDI_Monitoring::endProcess);
    connect(ui_->picPro, &MenuPanel::mainModuleRequested, this, &MDI_Monitoring::openMainModule);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, &MDI_Monitoring::windowEntered);
    dao::Workspace::setNoticeHandler([this](const QString &sentence) { showFailure(sentence); });
}

MDI_Monitoring::~MDI_Monitoring()
{
    dao::Workspace::setNoticeHandler({});
    // Screens use the session until they are destroyed, and members are destroyed before children.
    qDeleteAll(findChildren<ChildScreen *>());
}

template <typename Body> void MDI_Monitoring::guarded(Body &&body)
{
    try {
        body();
    } catch (const RunTimeError &error) {
        showError(error);
    }
}

void MDI_Monitoring::setUpBar()
{
    ui_->picCon3->setAttribute(Qt::WA_StyledBackground);
    setLabelIcon(*ui_->Image4, BarIcon, QStringLiteral("exit"));
    ui_->cmbFarm->setTypingAllowed(false);
    ui_->cmbYear->setTypingAllowed(false);
    connect(ui_->cmbFarm, &controls::ItemCombo::Click, this, [this] { guarded([this] { farmChosen(); }); });
    connect(ui_->cmbYear, &controls::ItemCombo::Click, this, &MDI_Monitoring::yearChosen);
    connect(ui_->CommandButton1, &QPushButton::clicked, this, &MDI_Monitoring::process);
    connect(ui_->cmdLExit, &ExitLabel::clicked, this, &MDI_Monitoring::endProcess);
    connect(ui_->cmdLExit, &ExitLabel::MouseMove, this, [this] { ui_->cmdLExit->setHovered(true); });
    for (QWidget *background : {static_cast<QWidget *>(ui_->picCon3), static_cast<QWidget *>(ui_->Image4)}) {
        background->setMouseTracking(true);
        background->installEventFilter(this);
    }
}

void MDI_Monitoring::setUpKeys()
{
    auto *keys = new QPushButton(tr("Keys (F1)"), ui_->statusLine);
    keys->setObjectName(QStringLiteral("cmdKeys"));
    keys->setToolTip(tr("All keys of the program (F1)"));
    ui_->statusLine->addPermanentWidget(keys);
    connect(keys, &QPushButton::clicked, this, [this] { guarded([this] { showKeys(); }); });
    connect(new QShortcut(Qt::Key_F1, this), &QShortcut::activated, keys, &QPushButton::click);
}

void MDI_Monitoring::showKeys()
{
    const QObject *screen = CurrentForm_ ? static_cast<QObject *>(CurrentForm_) : ui_->picPro;
    ShortcutsPage::openOver(this, QLatin1String(screen->metaObject()->className()));
}

MDI_Monitoring::Load MDI_Monitoring::load(const QString &appPath)
{
    session_.DatabasePath = appPath + QStringLiteral("/Databases/");
    session_.AppPath = appPath;
    if (!lockFarm()) {
        return Load::OtherCopyRuns;
    }
    openMenu();
    Read_FindFarm(session_);
    Read_FindFarmID(session_);
    Read_FindYear(session_);
    Read_FindYearID(session_);
    Connect_Databases();
    if (session_.ViewOnlyReason.isEmpty()) {
        bringUpToDate();
    }
    session_.MenuRestore = true;
    openMenu();
    if (ui_->cmbFarm->ListCount() > 0) {
        ui_->cmbFarm->setListIndex(0);
    }
    showFirstSteps();
    ui_->picPro->focusPicture(QStringLiteral("imSpray"));
    return Load::Done;
}

QString MDI_Monitoring::alreadyOpenText()
{
    return QStringLiteral("The Pest Monitoring Module is already open!");
}

bool MDI_Monitoring::lockFarm()
{
    const auto folder = basic::findPath(session_.DatabasePath);
    if (!folder) {
        return true;
    }
    try {
        FarmLock::Attempt attempt = FarmLock::tryLock(*folder);
        lock_ = std::move(attempt.lock);
        if (lock_) {
            store::removeRestoreLeftovers(*folder);
            lock_->setLostHandler([this] {
                QMetaObject::invokeMethod(
                    this, [this] { showOnly(tr("Another program has taken the farm over, so nothing more is written.")); },
                    Qt::QueuedConnection);
            });
            return true;
        }
        if (attempt.holder->isThisComputer) {
            dialogs_.message(alreadyOpenText(), {}, controls::BoxIcon::Critical);
            return false;
        }
        const QString holder = attempt.holder->text();
        const QString text = tr("The farm is open elsewhere: %1. Only one program at a time can change it.\n\n"
                                "Do you want to view it without changing anything?");
        if (dialogs_.question(text.arg(holder), {}, controls::Answer::Yes) == controls::Answer::No) {
            return false;
        }
        showOnly(tr("The farm is open elsewhere (%1), so this program only shows it.").arg(holder));
    } catch (const RunTimeError &error) {
        showOnly(tr("%1 Without this lock the program only shows the farm.").arg(error.description()));
    }
    return true;
}

void MDI_Monitoring::showOnly(const QString &reason)
{
    session_.ViewOnlyReason = reason;
    noteStartFailure(reason);
    if (findChild<QLabel *>(QStringLiteral("lblViewOnly")) == nullptr) {
        auto *mark = new QLabel(tr("View only"), ui_->statusLine);
        mark->setObjectName(QStringLiteral("lblViewOnly"));
        mark->setToolTip(reason);
        ui_->statusLine->addPermanentWidget(mark);
    }
}

/// An error ends it without a box; the status line names what could not be opened.
void MDI_Monitoring::Connect_Databases()
{
    try {
        openDatabases(session_);
        Fill_Farm_Combo(*ui_->cmbFarm, objPestMON_);
        ui_->cmbFarm->setText(session_.CurrentFarm);
    } catch (const RunTimeError &error) {
        const QString unopened = session_.dbMain.failure() + session_.dbPest.failure() + session_.dbSpray.failure();
        noteStartFailure(unopened.isEmpty() ? error.description() : unopened);
    }
}

void MDI_Monitoring::noteStartFailure(const QString &text)
{
    startFailures_ += text;
    resetStatus();
}

void MDI_Monitoring::resetStatus()
{
    if (startFailures_.isEmpty()) {
        ui_->statusLine->clear();
    } else {
        showFailure(startFailures_.join(u' '));
    }
}

/// Only printing needs them, so a failure is reported and nothing more.
void MDI_Monitoring::makeTemplates(const QString &installed)
{
    try {
        makeProgramFolder(session_.AppPath, installed);
    } catch (const RunTimeError &error) {
        noteStartFailure(error.description());
    }
}

/// In the background, after the window is shown, and again before the first write of each further day. A failed copy must not
/// keep the office from working.
void MDI_Monitoring::backUpEachDay()
{
    objPestMON_.setBeforeFirstWriteOfDay([this] { dailyBackup_.startForToday(); });
    auto *progress = new QLabel(ui_->statusLine);
    progress->setObjectName(QStringLiteral("lblBackup"));
    ui_->statusLine->addPermanentWidget(progress);
    progress->hide();
    connect(&dailyBackup_, &store::DailyBackup::progressed, progress, [progress](int percent) {
        progress->setText(tr("Copying the pest database: %1 %").arg(percent));
        progress->show();
    });
    connect(&dailyBackup_, &store::DailyBackup::finished, this, [this, progress](const QString &failure) {
        progress->hide();
        if (!failure.isEmpty()) {
            noteStartFailure(tr("Today's copy of the pest database was not made: %1").arg(failure));
        }
    });
    QTimer::singleShot(0, this, [this] { dailyBackup_.startForToday(); });
}

void MDI_Monitoring::bringUpToDate()
{
    backUpEachDay();
    upgrade();
    Update_TempBlock();
    store::Recalc_PMTransWeek(session_);
}

void MDI_Monitoring::upgrade()
{
    store::Ensure_TempBlockTable(session_, [this](const RunTimeError &error) {
        const QString text = QStringLiteral("Database could not be updated. Contact Torvane Data for support...        \n"
                                            "Error message: %1\n%2");
        dialogs_.message(text.arg(error.number()).arg(error.description()), QStringLiteral("Error"), controls::BoxIcon::Critical);
    });
    store::Ensure_PMRepeatField(session_);
    try {
        store::Ensure_Indexes(session_);
    } catch (const RunTimeError &error) {
        noteStartFailure(tr("Long lists may be slow, the pest database took no new index: %1").arg(error.description()));
    }
}

void MDI_Monitoring::Update_TempBlock()
{
    store::Update_TempBlock(session_);
}

void MDI_Monitoring::openEntry(const MenuEntry &entry)
{
    const auto zeroPosition = [&](ZeroPosition moment) {
        if (entry.zeroPosition == moment) {
            session_.ListRow = 0;
            session_.ListCol = 0;
        }
    };
    lastPicture_ = entry.picture;
    zeroPosition(ZeroPosition::First);
    Close_Form();
    if (entry.reportsFolder) {
        makeReportsFolder();
    }
    zeroPosition(ZeroPosition::AfterReportsFolder);
    ChildScreen *screen = entry.factory(*this, this);
    screen->setTag(entry.mode);
    showScreen(screen);
}

/// The screen opens also when the folder exists or cannot be made.
void MDI_Monitoring::makeReportsFolder()
{
    const QString folder = basic::pathForWriting(session_.AppPath + QStringLiteral("/Reports/Pest Monitor Reports"));
    static_cast<void>(basic::makeFolder(folder));
}

void MDI_Monitoring::showScreen(ChildScreen *screen)
{
    CurrentForm_ = screen;
    connect(screen, &ChildScreen::closeRequested, this, [this, screen] { unload(screen); });
    connect(screen, &ChildScreen::titleMoved, this, [this, screen](const QString &title) {
        if (screen == CurrentForm_) {
            showTitleInBar(title);
        }
    });
    for (const auto *picker : screen->findChildren<controls::DatePicker *>()) {
        connect(picker, &controls::DatePicker::refused, this, &MDI_Monitoring::showFailure);
    }
    nameKeysInTips(*screen);
    ui_->screenArea->setWidget(screen);
    ui_->clientArea->setCurrentWidget(ui_->screenArea);
    screen->show();
    screen->setFocus();
    screen->activateScreen();
    if (screen == CurrentForm_) {
        screen->focusFirstControl();
    }
}

/// The title of a screen that is too short for it.
void MDI_Monitoring::showTitleInBar(const QString &title)
{
    ui_->barTitle->setText(title);
    ui_->barTitle->setVisible(!title.isEmpty());
}

void MDI_Monitoring::Close_Form()
{
    runOrIgnore([this] {
        if (CurrentForm_) {
            unload(CurrentForm_);
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        }
    });
}

/// May be called from a handler of the screen, so it is deleted later.
void MDI_Monitoring::unload(ChildScreen *screen)
{
    if (screen != CurrentForm_) {
        return;
    }
    // Before CurrentForm_ is reset, so that a focused field loses its focus as usual.
    restoreMenu();
    CurrentForm_ = nullptr;
    showTitleInBar({});
    ui_->screenArea->takeWidget();
    screen->setParent(this);
    screen->deleteLater();
    resetStatus();
}

ChildScreen *MDI_Monitoring::CurrentForm() const
{
    return CurrentForm_;
}

bool MDI_Monitoring::menuIsOpen() const
{
    return ui_->clientArea->currentWidget() == ui_->menuArea;
}

void MDI_Monitoring::openMenu()
{
    ui_->clientArea->setCurrentWidget(ui_->menuArea);
}

void MDI_Monitoring::restoreMenu()
{
    if (session_.MenuRestore) {
        openMenu();
        ui_->picPro->focusPicture(lastPicture_);
    }
}

void MDI_Monitoring::farmChosen()
{
    const controls::ItemCombo &combo = *ui_->cmbFarm;
    Close_Form();
    // Without a selection this raises an error; errors are ignored only from here on.
    session_.CurrentFarmID = combo.ItemData(combo.ListIndex());
    runOrIgnore([&] {
        session_.CurrentFarmID = combo.ItemData(combo.ListIndex());
        session_.CurrentFarm = combo.Text();
        if (session_.MenuRestore) {
            openMenu();
        }
    });
}

void MDI_Monitoring::yearChosen()
{
    const controls::ItemCombo &combo = *ui_->cmbYear;
    runOrIgnore([&] {
        session_.CurrentYearID = combo.ItemData(combo.ListIndex());
        session_.CurrentYear = combo.Text();
    });
}

void MDI_Monitoring::process()
{
    Close_Form();
    session_.MenuRestore = true;
    openMenu();
}

/// A screen is activated again when the window is entered from another program, never when one of our boxes closes.
void MDI_Monitoring::windowEntered(Qt::ApplicationState state)
{
    if (state != Qt::ApplicationActive) {
        windowLeft_ = true;
        return;
    }
    const bool entered = windowLeft_ && QApplication::activeModalWidget() == nullptr;
    windowLeft_ = false;
    if (!entered) {
        return;
    }
    // Queued, so that nothing is rebuilt before the window system has moved the focus.
    const QPointer<ChildScreen> screen = CurrentForm_;
    QMetaObject::invokeMethod(
        this,
        [this, screen] {
            refreshFarmLists();
            if (screen && screen == CurrentForm_) {
                guarded([&] { screen->activateScreen(); });
            }
        },
        Qt::QueuedConnection);
}

void MDI_Monitoring::openMainModule(const QString &page)
{
    if (const QString reason = startMainModule_ ? startMainModule_(page) : QString(); !reason.isEmpty()) {
        showFailure(reason);
    }
}

void MDI_Monitoring::refreshFarmLists()
{
    try {
        refreshFarms();
        if (session_.ViewOnlyReason.isEmpty()) {
            Update_TempBlock();
        }
        showFirstSteps();
    } catch (const RunTimeError &error) {
        showFailure(tr("Changed blocks and farms do not show before the next start: %1").arg(error.description()));
    }
}

/// The farm that is worked on stays chosen, whatever else has changed.
void MDI_Monitoring::refreshFarms()
{
    controls::ItemCombo &combo = *ui_->cmbFarm;
    const auto entries = [&combo] {
        QList<std::pair<QString, qint32>> found;
        for (int i = 0; i < combo.ListCount(); ++i) {
            found.append({combo.List(i), combo.ItemData(i)});
        }
        return found;
    };
    const auto before = entries();
    const QString shown = combo.Text();
    Fill_Farm_Combo(combo, objPestMON_);
    const auto after = entries();
    const auto chosen =
        std::find_if(after.begin(), after.end(), [this](const auto &farm) { return farm.second == session_.CurrentFarmID; });
    if (chosen != after.end()) {
        session_.CurrentFarm = chosen->first;
        combo.setText(chosen->first);
    } else if (before.isEmpty() && !after.isEmpty()) {
        combo.setListIndex(0);
    } else {
        combo.setText(shown);
    }
}

void MDI_Monitoring::showFirstSteps()
{
    QString text;
    const bool isOpen = session_.dbMain.isSet();
    const auto isEmpty = [this](const char *table) {
        return session_.dbMain->OpenRecordset(QStringLiteral("Select Count(*) from ") + QLatin1String(table)).longValue(0) == 0;
    };
    if (isOpen && ui_->cmbFarm->ListCount() == 0) {
        text = tr("There is no farm yet: enter the farm, its blocks, workers and pests in the Main Module.");
    } else if (isOpen && isEmpty("tblBlock")) {
        text = tr("There are no blocks yet: enter them, the workers and the pests in the Main Module.");
    }
    ui_->picPro->setFirstSteps(text);
}

bool MDI_Monitoring::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseMove) {
        Clear_Exit_Hover();
    }
    return QMainWindow::eventFilter(watched, event);
}

void MDI_Monitoring::Clear_Exit_Hover()
{
    ui_->cmdLExit->setHovered(false);
}

void MDI_Monitoring::showStatus(const QString &text)
{
    ui_->statusLine->showWritten(text);
}

void MDI_Monitoring::showFailure(const QString &text)
{
    ui_->statusLine->showFailure(text);
}

void MDI_Monitoring::showError(const RunTimeError &error)
{
    dialogs_.message(errorText(error), {}, controls::BoxIcon::Critical);
}

void MDI_Monitoring::showNote(const QString &text)
{
    ui_->statusLine->showNote(text);
}

QString MDI_Monitoring::statusText() const
{
    return ui_->statusLine->text();
}

void MDI_Monitoring::closeEvent(QCloseEvent *event)
{
    event->accept();
    endProcess();
}

void MDI_Monitoring::endProcess()
{
    Q_EMIT ended();
    QCoreApplication::exit(0);
}
