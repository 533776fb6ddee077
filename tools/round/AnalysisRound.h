// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PaperRound.h"
#include "Report.h"
#include "UiDriver.h"

#include "fakes/QueuedDialogs.h"

class MDI_Monitoring;
struct AnalysisKind;

/// Each of the five kinds of analysis through its real screen, by mouse and keys: one is added, changed, filtered, put on a sheet
/// and deleted, and what is shown is compared with the file. Begins and ends with the menu open.
class AnalysisRound
{
public:
    AnalysisRound(MDI_Monitoring &window, QueuedDialogs &dialogs, const RecordingLauncher &launcher, Report &report);

    void play();

private:
    void playKind(const char *picture, const AnalysisKind &kind);
    /// Types a whole record without the mouse; box n gets first + n.
    void add(const AnalysisKind &kind, int first);
    void typeBoxes(const AnalysisKind &kind, int first);
    void change(const AnalysisKind &kind, int first);
    void filter(const AnalysisKind &kind);
    void remove(const AnalysisKind &kind);
    /// The cells of a row and the fields of its record.
    void compareWithFile(const AnalysisKind &kind, int row, int first);
    int rowOf(const QString &key) const;
    /// Highest key of the kind in the list.
    QString newestKey() const;

    MDI_Monitoring &window_;
    QueuedDialogs &dialogs_;
    Report &report_;
    UiDriver driver_;
    PaperRound paper_;
    QString key_;
};
