// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "mainmodule/ListHost.h"
#include "mainmodule/StartPage.h"
#include "shell/WindowRequest.h"

#include <QMainWindow>

#include <functional>
#include <memory>
#include <vector>

namespace Ui
{
class MainModuleWindow;
}

namespace mainmodule
{

class FarmBar;
class ListPage;

/// The main window of the main module: the farm and season chosen, the pages of the farm lists, and the way to the monitoring.
class MainModuleWindow : public QMainWindow, public ListHost
{
    Q_OBJECT
public:
    explicit MainModuleWindow(controls::Dialogs &dialogs, QWidget *parent = nullptr);
    ~MainModuleWindow() override;

    /// Opens the lists of the program's folder and shows a page; without one, that of the next step.
    void load(const QString &appPath, const QString &page = {});
    /// By the name that a command line has for it, such as "blocks"; an unknown name shows the start page.
    void showPage(const QString &name);
    QString pageName() const;
    QString statusText() const;

    /// Starts the monitoring; returns why it could not, or an empty text.
    using Starter = std::function<QString()>;
    void setMonitoringStarter(Starter starter) { startMonitoring_ = std::move(starter); }

    SessionContext &session() override { return session_; }
    const lists::FarmLists &farmLists() const override { return lists_.lists(); }
    controls::Dialogs &dialogs() override { return dialogs_; }
    std::int32_t farm() const override { return session_.CurrentFarmID; }
    Written write(const std::vector<lists::Change> &changes, const QString &done) override;
    void showStatus(const QString &text) override;
    void showFailure(const QString &text) override;
    void showNote(const QString &text) override;
    void showError(const basic::RunTimeError &error) override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    struct Page {
        QString name;
        QString title;
        ListPage *list = nullptr;
    };

    void setUpBar();
    void setUpPages();
    void setUpKeys();
    void addPage(const QString &name, ListPage *page);
    ListPage *currentList() const;
    bool leavePage();
    void pageChosen(int index);
    void stepPage(int steps);
    void openStep(StartStep step);

    void openLists();
    void makeDatabases();
    void refresh();
    void offerNextStep();
    void writeHandOff();
    void openMonitoring();

    void step(bool undo);
    void chooseStarter(ListPage &page);
    void saveBook(const ListPage &page);
    void windowEntered(Qt::ApplicationState state);
    void openRequestedPage(const QString &page);
    /// Runs what a signal brought about, and shows an error that nothing else handles.
    template <typename Body> void guarded(Body &&body);

    std::unique_ptr<Ui::MainModuleWindow> ui_;
    controls::Dialogs &dialogs_;
    SessionContext session_;
    lists::ListSession lists_;
    std::vector<Page> pages_;
    StartPage *start_ = nullptr;
    FarmBar *bar_ = nullptr;
    int shownPage_ = 0;
    bool hasDatabases_ = false;
    /// A list was empty since the program was started.
    bool isNewOffice_ = false;
    bool windowLeft_ = false;
    Starter startMonitoring_;
    std::unique_ptr<WindowRequest> requests_;
};

} // namespace mainmodule
