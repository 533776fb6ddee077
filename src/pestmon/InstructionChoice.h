// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/PestMonPage.h"
#include "screens/PickGrid.h"

#include <functional>

namespace pestmon
{

/// The choice of an instruction's blocks and pests, held in working tables until the instruction is saved, and the captions that
/// count it.
class InstructionChoice : public PestMonPage
{
    Q_OBJECT
public:
    InstructionChoice(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui);

    /// Fills the list of types.
    void load();
    /// Blanks the captions of the two grids until their counts are shown.
    void blankCounts();
    /// Fills both grids for the session's instruction, with the pests of all types.
    void fill();
    int pestsChosen() const { return pests_.Count_Selected(); }

Q_SIGNALS:
    /// A block or a pest was selected or deselected.
    void changed();

private:
    struct Tables;
    static const Tables BlockTables;
    static const Tables PestTables;

    void Fill_BlockIn();
    void Fill_PestIn();
    /// Marks a row of the saved instruction; a row left from an unsaved choice is deleted instead.
    void showChoice(PickGrid &list, int row, const Tables &tables);
    void showAllPestTypes();
    void showCounts();
    void blockClick(int row);
    void pestClick(int row);
    void pestTypeClick();
    /// Only marks: the working table is not changed.
    void Select_AllPests(bool marked);
    /// Adds a row to the choice or removes it, and paints its mark; the status line reports a failure.
    void toggle(PickGrid &list, int row, const Tables &tables, const std::function<int()> &add);
    /// Also from the saved instruction, if there is one.
    int drop(std::int32_t key, const Tables &tables);

    PickGrid blocks_;
    PickGrid pests_;
    const QString blocksCaption_;
    const QString pestsCaption_;
};

} // namespace pestmon
