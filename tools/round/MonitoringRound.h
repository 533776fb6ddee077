// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PaperRound.h"
#include "Report.h"
#include "UiDriver.h"

#include "fakes/QueuedDialogs.h"

#include <QString>
#include <QStringList>

class MDI_Monitoring;

/// A whole monitoring round of a farm office through the real screens, by mouse and keys, checked on the screen and in the file.
class MonitoringRound
{
public:
    MonitoringRound(MDI_Monitoring &window, QueuedDialogs &dialogs, const RecordingLauncher &launcher, Report &report);

    void openScreen();
    /// Issues an instruction, types its findings, completes it and finds its successor.
    void playCounts();
    /// The same with answers, without a successor.
    void playAnswers();
    /// Both records reports and the stored sheets; the menu is open afterwards.
    void playReports();
    /// Opens what was typed once more, in a restarted program.
    void reopen(const QString &notes);

    static QString countNotes();

private:
    void issue(const QString &method, const QString &notes, int blocks, int pests, bool repeat);
    void openCapture(const QString &notes);
    void typeCounts();
    void refuseTooLarge();
    void toggleAnswers();
    void complete();
    void checkList(const QString &notes, int rows);
    /// Compares every shown cell of the block with the rows in the file.
    void compareWithFile();
    int points() const;
    int pests() const;

    MDI_Monitoring &window_;
    QueuedDialogs &dialogs_;
    Report &report_;
    UiDriver driver_;
    PaperRound paper_;
};
