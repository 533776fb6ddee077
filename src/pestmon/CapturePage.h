// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/CaptureGrid.h"
#include "pestmon/PestMonPage.h"

/// The tab in which findings are typed in and an instruction is completed, which may issue its successor.
class CapturePage : public PestMonPage
{
    Q_OBJECT
public:
    CapturePage(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui);

    /// Shows the session's instruction, ticked as completed today, with no block chosen.
    void open();
    /// Empties the grid before another face takes over.
    void clear() { grid_.clear(); }

Q_SIGNALS:
    void closed();

private:
    void fillBlocks();
    void blockClick();
    /// Makes an entry the chosen one without raising Click; -1 for none.
    void nameBlock(int index);
    void completedClick();
    void cmdSaveTrans();
    void save();
    void close();
    void printFilledSheet();
    /// Saves an open cell, or asks whether it may be dropped; false when it is to stay.
    bool settleBox();

    CaptureGrid grid_;
    /// Entry of cmbBlock whose cells the grid shows; -1 before the first choice.
    int shownBlock_ = -1;
};
