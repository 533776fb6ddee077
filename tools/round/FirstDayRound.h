// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Report.h"
#include "UiDriver.h"

#include "fakes/QueuedDialogs.h"
#include "fakes/RecordingLauncher.h"

class MDI_Monitoring;
namespace mainmodule
{
class MainModuleWindow;
}

/// The first day of a new office, from an empty folder to the first field sheet of a farm of 30 blocks, with every key, word and
/// click counted.
class FirstDayRound
{
public:
    explicit FirstDayRound(Report &report) : report_(report) {}

    /// Enters the lists in the Main Module.
    void enterLists(mainmodule::MainModuleWindow &window);
    /// Issues an instruction and prints its sheet.
    void printFieldSheet(MDI_Monitoring &window, QueuedDialogs &dialogs, const RecordingLauncher &launcher);
    /// The remaining pages, which a first day does not need.
    void showOtherPages(mainmodule::MainModuleWindow &window, const QString &folder, QueuedDialogs &dialogs);
    int actions() const { return actions_; }

private:
    void click(UiDriver &driver, const char *name);
    void clickPage(UiDriver &driver, int page);
    void key(UiDriver &driver, Qt::Key key);
    void type(UiDriver &driver, const QString &text);
    /// Ticks lines of the dialog that the button opens, all of them for none in particular, and adds them.
    void goOnToStarters(UiDriver &driver, const QList<int> &rows, const QString &picture);
    void pasteBlocks();

    Report &report_;
    int actions_ = 0;
};
