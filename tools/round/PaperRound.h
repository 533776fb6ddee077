// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Report.h"
#include "UiDriver.h"

#include "fakes/QueuedDialogs.h"
#include "fakes/RecordingLauncher.h"

class MDI_Monitoring;

/// The workbooks of the round: each is printed from its screen and checked in its folder; at the end they are rendered as images
/// if an office program is installed.
class PaperRound
{
public:
    PaperRound(MDI_Monitoring &window, QueuedDialogs &dialogs, const RecordingLauncher &launcher, Report &report);

    /// With the editor open on a saved instruction.
    void printFieldSheets();
    /// With a block open for capture.
    void printFilledSheet();
    /// With a list of analyses open.
    void printAnalyses();
    /// With the menu open.
    void runReports();
    void openStored();
    void renderWorkbooks();

private:
    /// Clicks, and checks that one more workbook was opened: in `folder` below Reports, named `begin` ... `end`.
    void expectWorkbook(const char *button, const QString &folder, const QString &begin, const QString &end);

    MDI_Monitoring &window_;
    QueuedDialogs &dialogs_;
    const RecordingLauncher &launcher_;
    Report &report_;
    UiDriver driver_;
};
