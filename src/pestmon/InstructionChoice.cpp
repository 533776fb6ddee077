// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/InstructionChoice.h"

#include "common/MonitoringConstants.h"
#include "common/PestTypes.h"
#include "platform/basic/Numbers.h"
#include "screens/GridActions.h"
#include "store/clsPestMONNew.h"
#include "ui_frmPestMon2.h"

namespace pestmon
{

namespace
{

constexpr int BlockPointsColumn = 3;
constexpr auto AllTypes = "<All>";

constexpr std::array<GridColumn, 5> BlockColumns{{{"BlockID", 0, "BlockID"},
                                                  {"BlockpID", 0, "BlockID"},
                                                  {"Block", 1500, "Block"},
                                                  {"Points", 600, "NoofMPoints"},
                                                  {"Select", 600}}};

} // namespace

/// The store's operations for the choice of blocks or of pests.
struct InstructionChoice::Tables {
    using Key = clsPestMONNew::Key;
    using Status = clsPestMONNew::Status;
    dao::Recordset (clsPestMONNew::*find)(Key key);
    Status (clsPestMONNew::*drop)(Key key);
    Status (clsPestMONNew::*dropFromInstruction)(Key instruction, Key key);
    /// The failure to delete a row of an earlier choice.
    const char *notDropped;
};

const InstructionChoice::Tables InstructionChoice::BlockTables{
    &clsPestMONNew::New_Fill_Blocks_For_Instruction, &clsPestMONNew::New_Delete_Block_for_Instruction,
    &clsPestMONNew::New_Delete_Block_for_Transaction, "A block of an earlier choice could not be removed"};
const InstructionChoice::Tables InstructionChoice::PestTables{
    &clsPestMONNew::New_Fill_Pests_For_Instruction, &clsPestMONNew::New_Delete_Pest_for_Instruction,
    &clsPestMONNew::New_Delete_Pest_for_Transaction, "A pest of an earlier choice could not be removed"};

InstructionChoice::InstructionChoice(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui)
    : PestMonPage(screen, host, ui), blocks_(*ui.grdBlockIn, BlockColumns), pests_(*ui.grdPestIn, PestPickColumns),
      blocksCaption_(ui.lblMethod_1->text()), pestsCaption_(ui.lblMethod_19->text())
{
    ui_.cmbTPest->setTypingAllowed(false);
    addFocusKey(*ui_.grdBlockIn, Qt::ALT | Qt::Key_K);
    addFocusKey(*ui_.grdPestIn, Qt::ALT | Qt::Key_I);
    on(ui_.grdBlockIn, &controls::FlexGrid::Click, [this](int row, int) { blockClick(row); });
    on(ui_.grdPestIn, &controls::FlexGrid::Click, [this](int row, int) { pestClick(row); });
    on(ui_.cmbTPest, &controls::ItemCombo::Click, [this] { pestTypeClick(); });
    ui_.chkSelectPest->setToolTip(QStringLiteral("Marks the pests shown without selecting them"));
    on(ui_.chkSelectPest, &QCheckBox::clicked, [this](bool ticked) { Select_AllPests(ticked); });
}

void InstructionChoice::load()
{
    ui_.cmbTPest->Clear();
    for (const QString &caption : pestTypeCaptions()) {
        ui_.cmbTPest->AddItem(caption);
    }
    ui_.cmbTPest->AddItem(QLatin1String(AllTypes));
}

void InstructionChoice::fill()
{
    Fill_BlockIn();
    showAllPestTypes();
    Fill_PestIn();
    showCounts();
}

void InstructionChoice::blankCounts()
{
    ui_.lblMethod_1->clear();
    ui_.lblMethod_19->clear();
}

void InstructionChoice::showCounts()
{
    ui_.lblMethod_1->setText(blocks_.counted(blocksCaption_));
    ui_.lblMethod_19->setText(pests_.counted(pestsCaption_));
}

void InstructionChoice::showAllPestTypes()
{
    ui_.cmbTPest->setText(QLatin1String(AllTypes));
    session().PestTypeFilter.clear();
    ui_.chkSelectPest->setChecked(false);
}

void InstructionChoice::Fill_BlockIn()
{
    objPestMON().RecordTotal = 0;
    blocks_.fill(objPestMON().XGet_PestBlocks_for_Farms(session().CurrentFarmID), noBlocksText(),
                 [this](int row) { showChoice(blocks_, row, BlockTables); });
}

void InstructionChoice::Fill_PestIn()
{
    pests_.fill(objPestMON().Get_Pests_for_ALL_FruitTypes(session().PestTypeFilter),
                noPestsText(!session().PestTypeFilter.isEmpty()), [this](int row) { showChoice(pests_, row, PestTables); });
}

void InstructionChoice::showChoice(PickGrid &list, int row, const Tables &tables)
{
    const std::int32_t key = list.key(row);
    if ((objPestMON().*tables.find)(key).Eof()) {
        return;
    }
    if (session().CurrentPMTransID != 0) {
        list.setMarked(row, true);
    } else if ((objPestMON().*tables.drop)(key) == clsPestMONNew::Failed) {
        showStoreFailure(QLatin1String(tables.notDropped));
    }
}

void InstructionChoice::pestTypeClick()
{
    session().PestTypeFilter = pestTypeFilter(ui_.cmbTPest->Text());
    Fill_PestIn();
}

void InstructionChoice::Select_AllPests(bool marked)
{
    pests_.markAll(marked);
    const int selected = objPestMON().New_Get_Pests_For_Instruction().RecordCount();
    host().showNote(QStringLiteral("%1; the selection is unchanged: %2 selected")
                        .arg(marked ? QStringLiteral("All pests shown are marked") : QStringLiteral("The marks are removed"))
                        .arg(selected));
}

void InstructionChoice::toggle(PickGrid &list, int row, const Tables &tables, const std::function<int()> &add)
{
    const QString failure = QStringLiteral("%1 could not be changed").arg(list.name(row));
    runOrReport(failure, [&] {
        const bool choose = !list.isMarked(row);
        if ((choose ? add() : drop(list.key(row), tables)) == clsPestMONNew::Failed) {
            showStoreFailure(failure);
            return;
        }
        list.setMarked(row, choose);
        host().showStatus((choose ? QStringLiteral("%1 selected") : QStringLiteral("%1 deselected")).arg(list.name(row)));
        Q_EMIT changed();
        showCounts();
    });
}

int InstructionChoice::drop(std::int32_t key, const Tables &tables)
{
    const int status = (objPestMON().*tables.drop)(key);
    return status == clsPestMONNew::Done && session().CurrentPMTransID > 0
        ? (objPestMON().*tables.dropFromInstruction)(session().CurrentPMTransID, key)
        : status;
}

void InstructionChoice::blockClick(int row)
{
    if (!blocks_.isDataRow(row)) {
        return;
    }
    SessionContext &values = session();
    values.CurrentBlockID = blocks_.key(row);
    values.CurrentNoofMpoints = basic::toInteger16(basic::Val(ui_.grdBlockIn->TextMatrix(row, BlockPointsColumn)));
    if (values.CurrentNoofMpoints == 0) {
        values.CurrentNoofMpoints = DefaultPoints;
    }
    values.CurrentBlockName = blocks_.name(row);
    toggle(blocks_, row, BlockTables,
           [&] { return objPestMON().New_Add_Block_for_Instruction(values.CurrentBlockID, values.CurrentNoofMpoints); });
}

void InstructionChoice::pestClick(int row)
{
    if (!pests_.isDataRow(row)) {
        return;
    }
    SessionContext &values = session();
    values.CurrentCTargetID = pests_.key(row);
    values.CurrentCTarget = pests_.name(row);
    toggle(pests_, row, PestTables, [&] { return objPestMON().New_Add_Pest_for_Instruction(values.CurrentCTargetID); });
}

} // namespace pestmon
