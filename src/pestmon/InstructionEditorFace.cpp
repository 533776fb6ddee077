// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/InstructionEditorFace.h"

#include "common/MonitoringConstants.h"
#include "common/PestTypes.h"
#include "common/WeekNumber.h"
#include "pestmon/modPestMon.h"
#include "platform/basic/Clock.h"
#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/BusyPointer.h"
#include "platform/controls/Dialogs.h"
#include "reports/FieldSheetRun.h"
#include "shell/ListFillers.h"
#include "shell/LongWork.h"
#include "ui_frmPestMon2.h"

namespace
{

constexpr int BlockPointsColumn = 3;
/// Columns B to P of a field sheet.
constexpr int MostPests = 15;
constexpr auto AllTypes = "<All>";

/// The bar under the fields while sheets are made, in steps of half a percent. It starts at the first of them and goes back to
/// it.
class SheetBar
{
public:
    explicit SheetBar(QProgressBar &bar) : bar_(bar)
    {
        constexpr int whole = 200;
        bar_.setRange(0, whole);
        bar_.setValue(1);
        bar_.show();
        LongWork::letRepaint();
    }
    ~SheetBar()
    {
        bar_.hide();
        bar_.setValue(1);
    }
    SheetBar(const SheetBar &) = delete;
    SheetBar &operator=(const SheetBar &) = delete;

    void show(double percent) const
    {
        bar_.setValue(2 * basic::toInteger16(percent));
        LongWork::letRepaint();
    }

private:
    QProgressBar &bar_;
};

std::vector<PickGrid::Column> blockColumns()
{
    return {{QStringLiteral("BlockID"), 0, "BlockID"},
            {QStringLiteral("BlockpID"), 0, "BlockID"},
            {QStringLiteral("Block"), 1500, "Block"},
            {QStringLiteral("Points"), 600, "NoofMPoints"},
            {QStringLiteral("Select"), 600}};
}

} // namespace

/// How the store keeps the choice of blocks, or of pests.
struct InstructionEditorFace::Choice {
    using Key = clsPestMONNew::Key;
    using Status = clsPestMONNew::Status;
    dao::Recordset (clsPestMONNew::*find)(Key key);
    Status (clsPestMONNew::*drop)(Key key);
    Status (clsPestMONNew::*dropFromInstruction)(Key instruction, Key key);
    /// What the status line says of a row of an earlier choice that could not be dropped.
    const char *notDropped;
};

const InstructionEditorFace::Choice InstructionEditorFace::BlockChoice{
    &clsPestMONNew::New_Fill_Blocks_For_Instruction, &clsPestMONNew::New_Delete_Block_for_Instruction,
    &clsPestMONNew::New_Delete_Block_for_Transaction, "A block left from an earlier choice could not be dropped"};
const InstructionEditorFace::Choice InstructionEditorFace::PestChoice{
    &clsPestMONNew::New_Fill_Pests_For_Instruction, &clsPestMONNew::New_Delete_Pest_for_Instruction,
    &clsPestMONNew::New_Delete_Pest_for_Transaction, "A pest left from an earlier choice could not be dropped"};

InstructionEditorFace::InstructionEditorFace(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui)
    : PestMonFace(screen, host, ui), blocks_(*ui.grdBlockIn, blockColumns()), pests_(*ui.grdPestIn, pestPickColumns())
{
    ui_.cmbPMethod->setTypingAllowed(false);
    ui_.cmbTPest->setTypingAllowed(false);
    on(ui_.grdBlockIn, &controls::FlexGrid::Click, [this](int row, int) { blockClick(row); });
    on(ui_.grdPestIn, &controls::FlexGrid::Click, [this](int row, int) { pestClick(row); });
    on(ui_.cmbTPest, &controls::ItemCombo::Click, [this] { pestTypeClick(); });
    on(ui_.chkSelectPest, &QCheckBox::clicked, [this](bool ticked) { pests_.markAll(ticked); });
    on(ui_.cmbPMethod, &controls::ItemCombo::Click, [this] { methodClick(); });
    on(ui_.cmbPerson, &controls::ItemCombo::Click, [this] { setSaved(false); });
    on(ui_.cmbPerson, &controls::ItemCombo::Change, [this] { setSaved(false); });
    on(ui_.chkRepeat, &QCheckBox::clicked, [this] { setSaved(false); });
    on(ui_.txtPMNotes, &QLineEdit::textEdited, [this] { setSaved(false); });
    on(ui_.txtWeekNo, &QLineEdit::textEdited, [this] { setSaved(false); });
    on(ui_.dtpPestM, &controls::DatePicker::Change, [this] { dateChange(); });
    on(ui_.cmdTSave, &QPushButton::clicked, [this] { cmdTSave(); });
    on(ui_.cmdTCancel, &QPushButton::clicked, [this] { cmdTCancel(); });
    on(ui_.cmdPALL, &QPushButton::clicked, [this] { printSheets(Sheets::AllBlocks); });
    on(ui_.cmdExcel, &QPushButton::clicked, [this] { printSheets(Sheets::PerBlock); });
}

void InstructionEditorFace::load()
{
    ui_.dtpPestM->setValue(basic::Clock::today());
    ui_.cmbTPest->Clear();
    for (const QString &caption : pestTypeCaptions()) {
        ui_.cmbTPest->AddItem(caption);
    }
    ui_.cmbTPest->AddItem(QLatin1String(AllTypes));
    ui_.cmbPMethod->Clear();
    for (dao::Recordset rows = objPestMON().Get_PestMethod(); !rows.Eof(); rows.MoveNext()) {
        ui_.cmbPMethod->AddItem(rows.text("PMMethod"), rows.longValue("PMMethodID"));
    }
    Fill_Worker_Combo(*ui_.cmbPerson, objPestMON());
}

void InstructionEditorFace::blankCounts()
{
    if (!captionsKept_) {
        blocksCaption_ = ui_.lblMethod_1->text();
        pestsCaption_ = ui_.lblMethod_19->text();
        captionsKept_ = true;
    }
    ui_.lblMethod_1->clear();
    ui_.lblMethod_19->clear();
}

void InstructionEditorFace::showCounts()
{
    const QString counted = QStringLiteral("%1 (%2 Selected)");
    ui_.lblMethod_1->setText(counted.arg(blocksCaption_).arg(blocks_.Count_Selected()));
    ui_.lblMethod_19->setText(counted.arg(pestsCaption_).arg(pests_.Count_Selected()));
}

void InstructionEditorFace::setSaved(bool saved)
{
    ui_.cmdPALL->setVisible(saved);
    ui_.cmdExcel->setVisible(saved);
}

bool InstructionEditorFace::isSaved() const
{
    return !ui_.cmdPALL->isHidden();
}

void InstructionEditorFace::openNew()
{
    const controls::BusyPointer busy;
    SessionContext &values = session();
    const QDate today = basic::Clock::today();
    ui_.dtpPestM->setValue(today);
    values.CurrentPMDate = basic::SerialDate::fromDate(today);
    values.CurrentPMWeek = weekNumber(today);
    ui_.txtWeekNo->setText(QString::number(values.CurrentPMWeek));
    if (Clear_Instruction(objPestMON()) == clsPestMONNew::Failed) {
        showStoreFailure(QStringLiteral("The last choice of blocks and pests could not be cleared"));
    }
    New_Instruction();
    enableFields();
}

void InstructionEditorFace::New_Instruction()
{
    SessionContext &values = session();
    values.CurrentNoofMpoints = 0;
    values.CurrentPMMethodID = 0;
    values.CurrentPMTransID = 0;
    // Left from the row that was selected before, it would complete the new instruction at its second save.
    values.CurrentPMCom = false;
    values.RepeatDone = true;
    ui_.txtPMNotes->clear();
    setSaved(false);
    Fill_BlockIn();
    showAllPestTypes();
    ui_.chkRepeat->setChecked(true);
    ui_.cmbPerson->setText(QString());
    ui_.cmbPMethod->setText(QString());
    Fill_PestIn();
    showCounts();
}

void InstructionEditorFace::enableFields()
{
    ui_.cmbPMethod->setEnabled(true);
    ui_.txtWeekNo->setEnabled(true);
    ui_.dtpPestM->setEnabled(true);
}

void InstructionEditorFace::showInstruction()
{
    const SessionContext &values = session();
    ui_.cmbPMethod->setText(values.CurrentPMMethod);
    ui_.dtpPestM->setValue(values.CurrentPMDate.date());
    ui_.cmbPerson->setText(values.CurrentPMPerson);
    ui_.txtPMNotes->setText(values.CurrentPMNotes);
    ui_.txtWeekNo->setText(QString::number(values.CurrentPMWeek));
    ui_.chkRepeat->setChecked(values.CurrentPMRepeat);
}

bool InstructionEditorFace::openSaved()
{
    const controls::BusyPointer busy;
    showInstruction();
    if (Clear_Instruction(objPestMON()) == clsPestMONNew::Failed
        || Load_Selection(objPestMON(), session().CurrentPMTransID) == clsPestMONNew::Failed) {
        showStoreFailure(QStringLiteral("The instruction could not be opened"));
        return false;
    }
    session().RepeatDone = false;
    setSaved(true);
    Fill_BlockIn();
    showAllPestTypes();
    Fill_PestIn();
    showCounts();
    enableFields();
    return true;
}

void InstructionEditorFace::showAllPestTypes()
{
    ui_.cmbTPest->setText(QLatin1String(AllTypes));
    session().PestTypeFilter.clear();
    ui_.chkSelectPest->setChecked(false);
}

void InstructionEditorFace::Fill_BlockIn()
{
    objPestMON().RecordTotal = 0;
    blocks_.fill(objPestMON().XGet_PestBlocks_for_Farms(session().CurrentFarmID),
                 [this](int row) { showChoice(blocks_, row, BlockChoice); });
}

void InstructionEditorFace::Fill_PestIn()
{
    pests_.fill(objPestMON().Get_Pests_for_ALL_FruitTypes(session().PestTypeFilter),
                [this](int row) { showChoice(pests_, row, PestChoice); });
}

void InstructionEditorFace::showChoice(PickGrid &list, int row, const Choice &choice)
{
    const std::int32_t key = list.key(row);
    if ((objPestMON().*choice.find)(key).Eof()) {
        return;
    }
    if (session().CurrentPMTransID != 0) {
        list.setMarked(row, true);
    } else if ((objPestMON().*choice.drop)(key) == clsPestMONNew::Failed) {
        showStoreFailure(QLatin1String(choice.notDropped));
    }
}

void InstructionEditorFace::pestTypeClick()
{
    session().PestTypeFilter = pestTypeFilter(ui_.cmbTPest->Text());
    Fill_PestIn();
}

void InstructionEditorFace::toggle(PickGrid &list, int row, const Choice &choice, const std::function<int()> &add)
{
    const QString failure = QStringLiteral("%1 could not be changed").arg(list.name(row));
    silently(failure, [&] {
        const bool choose = !list.isMarked(row);
        if ((choose ? add() : drop(list.key(row), choice)) == clsPestMONNew::Failed) {
            showStoreFailure(failure);
            return;
        }
        list.setMarked(row, choose);
        setSaved(false);
        showCounts();
    });
}

int InstructionEditorFace::drop(std::int32_t key, const Choice &choice)
{
    const int status = (objPestMON().*choice.drop)(key);
    return status == clsPestMONNew::Done && session().CurrentPMTransID > 0
        ? (objPestMON().*choice.dropFromInstruction)(session().CurrentPMTransID, key)
        : status;
}

void InstructionEditorFace::blockClick(int row)
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
    toggle(blocks_, row, BlockChoice,
           [&] { return objPestMON().New_Add_Block_for_Instruction(values.CurrentBlockID, values.CurrentNoofMpoints); });
}

void InstructionEditorFace::pestClick(int row)
{
    if (!pests_.isDataRow(row)) {
        return;
    }
    SessionContext &values = session();
    values.CurrentCTargetID = pests_.key(row);
    values.CurrentCTarget = pests_.name(row);
    toggle(pests_, row, PestChoice, [&] { return objPestMON().New_Add_Pest_for_Instruction(values.CurrentCTargetID); });
}

void InstructionEditorFace::methodClick()
{
    silently(QStringLiteral("The method could not be taken"), [&] {
        setSaved(false);
        session().CurrentPMMethodID = ui_.cmbPMethod->ItemData(ui_.cmbPMethod->ListIndex());
        session().CurrentPMMethod = ui_.cmbPMethod->Text();
    });
}

void InstructionEditorFace::dateChange()
{
    SessionContext &values = session();
    values.CurrentPMDate = basic::SerialDate::fromDate(ui_.dtpPestM->Value());
    values.CurrentPMWeek = weekNumber(ui_.dtpPestM->Value());
    ui_.txtWeekNo->setText(QString::number(values.CurrentPMWeek));
    values.CurrentPMPerson = ui_.cmbPerson->Text();
    values.CurrentPMNotes = ui_.txtPMNotes->text();
}

void InstructionEditorFace::cmdTSave()
{
    silently(QStringLiteral("The instruction could not be saved"), [&] { save(); });
}

void InstructionEditorFace::save()
{
    SessionContext &values = session();
    values.CurrentPMDate = basic::SerialDate::fromDate(ui_.dtpPestM->Value());
    values.CurrentPMWeek = basic::toInteger16(basic::Val(ui_.txtWeekNo->text()));
    values.CurrentPMRepeat = ui_.chkRepeat->isChecked();
    if (ui_.cmbPerson->Text().isEmpty()) {
        host().dialogs().message(QStringLiteral("Select a Person"));
        ui_.cmbPerson->setFocus();
        return;
    }
    values.CurrentPMPerson = ui_.cmbPerson->Text();
    values.CurrentPMNotes = ui_.txtPMNotes->text().isEmpty() ? QStringLiteral("NA") : ui_.txtPMNotes->text();
    if (values.CurrentPMMethodID == 0) {
        host().dialogs().message(QStringLiteral("Select a method"));
        ui_.cmbPMethod->setFocus();
        return;
    }
    const auto status = [&] {
        const controls::BusyPointer busy;
        return Save_Instruction(values, objPestMON());
    }();
    if (status == clsPestMONNew::Failed) {
        showStoreFailure(QStringLiteral("The instruction could not be saved"));
        return;
    }
    setSaved(true);
    host().showStatus(QStringLiteral("Instruction of %1 saved").arg(basic::formatDate(values.CurrentPMDate, u"yyyy/MM/dd")));
    host().dialogs().message(QStringLiteral("The monitoring instruction was saved - Print the field forms !"));
}

void InstructionEditorFace::cmdTCancel()
{
    if (!isSaved()) {
        const controls::Answer answer = host().dialogs().question(QStringLiteral("Do you want to save the changes?"),
                                                                  QStringLiteral("Save Changes"), controls::Answer::Yes);
        if (answer == controls::Answer::Yes) {
            cmdTSave();
        }
    }
    Q_EMIT closed();
}

bool InstructionEditorFace::mayPrint()
{
    controls::Dialogs &dialogs = host().dialogs();
    if (objPestMON().No_of_Pests(session().CurrentPMTransID) == 0) {
        dialogs.message(QStringLiteral("No pests are specified.\n\nSelect the pests to monitor."), QString(),
                        controls::BoxIcon::Exclamation);
        return false;
    }
    if (pests_.Count_Selected() > MostPests
        && dialogs.question(QStringLiteral("Too many pests to monitor selected. Continue."), QString(), controls::Answer::No)
            == controls::Answer::No) {
        return false;
    }
    return dialogs.question(QStringLiteral("Print?"), QString(), controls::Answer::No) == controls::Answer::Yes;
}

void InstructionEditorFace::printSheets(Sheets sheets)
{
    if (!mayPrint()) {
        return;
    }
    const FieldSheetOrder order{.instruction = session().CurrentPMTransID,
                                .method = session().CurrentPMMethod,
                                .completion = ui_.dtpPestM->Value(),
                                .person = ui_.cmbPerson->Text(),
                                .layout = SheetLayout::Single};
    const LongWork work;
    const SheetBar bar(*ui_.ProgressBar1);
    const auto progress = [&bar](double percent) { bar.show(percent); };
    if (sheets == Sheets::PerBlock) {
        printBlockSheets(host(), order, progress);
    } else {
        Print_All_Blocks(host(), order, progress);
    }
}
