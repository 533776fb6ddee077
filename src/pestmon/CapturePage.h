// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/CaptureGrid.h"
#include "pestmon/PestMonPage.h"

namespace pestmon
{

/// The tab in which findings are typed in and an instruction is completed, which may issue its successor.
class CapturePage : public PestMonPage
{
    Q_OBJECT
public:
    CapturePage(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui);

    /// Shows the session's instruction, ticked as completed today, with no block chosen.
    void open();
    /// Empties the grid before another page is shown.
    void clear() { grid_.clear(); }

Q_SIGNALS:
    void closed();

private:
    void fillBlocks();
    void blockClick();
    /// Chooses an entry silently; -1 for none.
    void nameBlock(int index);
    void completedClick();
    void cmdSaveTrans();
    void save();
    void close();
    void printFilledSheet();
    /// Saves an open cell, or asks whether to discard it; false when it stays open.
    bool settleCell();

    CaptureGrid grid_;
    /// Entry of cmbBlock whose cells the grid shows; -1 before the first choice.
    int shownBlock_ = -1;
};

} // namespace pestmon
