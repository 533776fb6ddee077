// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Report.h"
#include "UiDriver.h"

#include "fakes/QueuedDialogs.h"

class MDI_Monitoring;

/// The graphs through their real screen, by mouse and keys: the largest pests of a block by week, drawn as each of the twelve
/// kinds, zoomed, styled and printed. What is drawn is compared with sums asked of the file. Begins and ends with the menu open.
class GraphRound
{
public:
    GraphRound(MDI_Monitoring &window, QueuedDialogs &dialogs, Report &report);

    void play();

private:
    void chooseCriteria();
    void compareWithFile();
    void drawEachKind();
    void readOut();
    void zoom();
    void style();
    void print();
    void otherAxes();

    MDI_Monitoring &window_;
    QueuedDialogs &dialogs_;
    Report &report_;
    UiDriver driver_;
};
