// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/InstructionChoice.h"
#include "pestmon/PestMonPage.h"

namespace pestmon
{

/// The tab in which an instruction is made, changed and printed.
class InstructionEditorPage : public PestMonPage
{
    Q_OBJECT
public:
    InstructionEditorPage(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui);

    /// Fills the lists of methods, persons and types.
    void load();
    void blankCounts() { choice_.blankCounts(); }
    void openNew();
    /// The session's instruction. Returns false when it could not be loaded.
    bool openSaved();

Q_SIGNALS:
    void closed();

private:
    void New_Instruction();
    void enableFields();
    void showInstruction();
    void setSaved(bool saved);
    bool isSaved() const;
    void methodClick();
    void dateChange();
    void cmdTSave();
    void save();
    void cmdTCancel();
    /// The checks before both kinds of sheet; true to go on.
    bool mayPrint();
    enum class Sheets { PerBlock, AllBlocks };
    void printSheets(Sheets sheets);

    InstructionChoice choice_;
};

} // namespace pestmon
