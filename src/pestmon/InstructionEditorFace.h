// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/PestMonFace.h"
#include "shell/PickGrid.h"

/// The tab in which an instruction is made and changed. The choice of blocks and pests lies in working tables until it is saved.
class InstructionEditorFace : public PestMonFace
{
    Q_OBJECT
public:
    InstructionEditorFace(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui);

    /// Fills the lists of methods and persons.
    void load();
    /// Keeps the captions of the two grids, once, and blanks them until counts are shown.
    void blankCounts();
    void openNew();
    /// The session's instruction. Returns false when it could not be loaded.
    bool openSaved();

Q_SIGNALS:
    void closed();

private:
    struct Choice;
    static const Choice BlockChoice;
    static const Choice PestChoice;

    void New_Instruction();
    void enableFields();
    void showInstruction();
    void Fill_BlockIn();
    void Fill_PestIn();
    /// Marks a row that the saved instruction holds; one left from a choice that was never saved is dropped.
    void showChoice(PickGrid &list, int row, const Choice &choice);
    void showAllPestTypes();
    void showCounts();
    void blockClick(int row);
    void pestClick(int row);
    /// Adds a row to the choice or drops it. Paints the mark and hides the print buttons when that succeeded; tells why when it
    /// did not.
    void toggle(PickGrid &list, int row, const Choice &choice, const std::function<int()> &add);
    /// Drops it from the saved instruction too, where there is one.
    int drop(std::int32_t key, const Choice &choice);
    void setSaved(bool saved);
    bool isSaved() const;
    void methodClick();
    void pestTypeClick();
    void dateChange();
    void cmdTSave();
    void save();
    void cmdTCancel();
    /// The checks that stand before both kinds of sheet; true when one is to be made.
    bool mayPrint();
    enum class Sheets { PerBlock, AllBlocks };
    void printSheets(Sheets sheets);

    PickGrid blocks_;
    PickGrid pests_;
    QString blocksCaption_;
    QString pestsCaption_;
    bool captionsKept_ = false;
};
