// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/SessionContext.h"
#include "screens/ScreenHost.h"
#include "shell/DesktopLauncher.h"
#include "shell/MenuEntry.h"
#include "store/DailyBackup.h"
#include "store/clsPestMONNew.h"

#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <memory>
#include <vector>

namespace Ui
{
class MDI_Monitoring;
}
class ChildScreen;
class FarmLock;

/// The main window. Its load is the whole start of the program; after it the menu opens one screen at a time.
class MDI_Monitoring : public QMainWindow, public ScreenHost
{
    Q_OBJECT
public:
    enum class Load { Done, OtherCopyRuns };
    /// What a second copy on the same computer shows.
    static QString alreadyOpenText();

    /// Boxes of the start and of the screens go to `dialogs`.
    MDI_Monitoring(controls::Dialogs &dialogs, std::vector<MenuEntry> entries, QWidget *parent = nullptr);
    ~MDI_Monitoring() override;

    /// Reads the hand-off files, opens and upgrades the databases and selects the first farm. `appPath` is the program's folder.
    /// Unhandled errors propagate; the program must then end.
    Load load(const QString &appPath);
    /// Copies missing templates to the loaded program's folder.
    void makeTemplates(const QString &installed);

    /// The open screen; nothing while the menu is open.
    ChildScreen *CurrentForm() const;
    bool menuIsOpen() const;
    /// Text of the status line.
    QString statusText() const;
    /// Starts the main module on a page and returns why it could not, else an empty text.
    using MainModuleStarter = std::function<QString(const QString &page)>;
    void setMainModuleStarter(MainModuleStarter starter) { startMainModule_ = std::move(starter); }
    /// Replaces the desktop as the launcher of workbooks; must outlive the window.
    void setLauncher(excel::Launcher &launcher) { launcher_ = &launcher; }
    /// Updates the pest database's copy of the plantings; part of the load.
    void Update_TempBlock();

    SessionContext &session() override { return session_; }
    clsPestMONNew &objPestMON() override { return objPestMON_; }
    controls::Dialogs &dialogs() override { return dialogs_; }
    void showStatus(const QString &text) override;
    void showFailure(const QString &text) override;
    void showNote(const QString &text) override;
    void showError(const basic::RunTimeError &error) override;
    ProgressPicture &Picture4() override { return *Picture4_; }
    excel::Launcher &launcher() override { return *launcher_; }
    std::optional<excel::Application> &excelApplication() override { return excelApplication_; }

Q_SIGNALS:
    /// The user ended the program; screens cannot object.
    void ended();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Runs a slot and shows its error; no exception may pass through the toolkit.
    template <typename Body> void guarded(Body &&body);
    void setUpBar();
    void setUpKeys();
    void showKeys();
    void noteStartFailure(const QString &text);
    /// Takes the farm's lock. False when the start has to end; with a holder on another computer the user may view the farm.
    bool lockFarm();
    void showOnly(const QString &reason);
    /// A message does not outlive its screen; failures of the start are shown again.
    void resetStatus();
    void Connect_Databases();
    void backUpEachDay();
    void bringUpToDate();
    void upgrade();
    void openEntry(const MenuEntry &entry);
    void makeReportsFolder();
    void showScreen(ChildScreen *screen);
    void showTitleInBar(const QString &title);
    void Close_Form();
    void unload(ChildScreen *screen);
    void openMenu();
    void restoreMenu();
    void farmChosen();
    void yearChosen();
    void process();
    void windowEntered(Qt::ApplicationState state);
    void openMainModule(const QString &page);
    /// Takes over the farms and blocks that the main module has changed meanwhile.
    void refreshFarmLists();
    void refreshFarms();
    /// Leads to the main module while there is no farm or no block.
    void showFirstSteps();
    void Clear_Exit_Hover();
    void endProcess();

    std::unique_ptr<Ui::MDI_Monitoring> ui_;
    controls::Dialogs &dialogs_;
    SessionContext session_;
    clsPestMONNew objPestMON_;
    store::DailyBackup dailyBackup_;
    std::unique_ptr<FarmLock> lock_;
    DesktopLauncher desktop_;
    excel::Launcher *launcher_ = &desktop_;
    std::optional<excel::Application> excelApplication_;
    ProgressPicture *Picture4_ = nullptr;
    QPointer<ChildScreen> CurrentForm_;
    QString lastPicture_;
    QStringList startFailures_;
    MainModuleStarter startMainModule_;
    bool windowLeft_ = false;
};
