// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "OfficeModel.h"
#include "Timings.h"
#include "fakes/QueuedDialogs.h"
#include "fakes/RecordingLauncher.h"
#include "round/UiDriver.h"
#include "shell/MDI_Monitoring.h"

/// A farm office at work in the real window, a few days apart from one instruction to the next. What it types goes into the model
/// too, and what the screens show is compared with it at once.
class OfficeSimulation
{
public:
    OfficeSimulation(MDI_Monitoring &window, QueuedDialogs &dialogs, const RecordingLauncher &launcher, OfficeModel &model,
                     Timings &timings);

    /// Moves the start of the period to the first of January, so that the lists hold the year.
    void startYear(int year);
    /// The n-th piece of work, counted from 0: an instruction from issue or repeat to completion, now and then sheets, an
    /// analysis, a report, a graph. Begins and ends with the menu open.
    void work(int n, QDate day);
    /// What did not hold, in words.
    const QStringList &faults() const { return faults_; }

private:
    int issue(int n);
    void editUnchanged(int key);
    void capture(int key);
    void captureBlock(int key);
    int typeCounts(int pest);
    int toggleAnswers(int pest);
    void complete(int key, QDate day);
    void addAnalysis(int n);
    void runReport();
    void drawGraph(int n, QDate day);
    void selectRow(int key);
    int points() const;
    void expect(bool holds, const QString &what);

    MDI_Monitoring &window_;
    QueuedDialogs &dialogs_;
    const RecordingLauncher &launcher_;
    OfficeModel &model_;
    Timings &timings_;
    UiDriver driver_;
    QDate yearStart_;
    QStringList faults_;
};
