// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/InstructionEditorPage.h"

#include "common/WeekNumber.h"
#include "pestmon/NumberRange.h"
#include "pestmon/modPestMon.h"
#include "platform/basic/Clock.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/BusyPointer.h"
#include "platform/controls/Dialogs.h"
#include "reports/FieldSheetRun.h"
#include "screens/GridActions.h"
#include "screens/ListFillers.h"
#include "screens/LongWork.h"
#include "ui_frmPestMon2.h"

namespace pestmon
{

namespace
{

/// Columns B to P of a field sheet.
constexpr int MaxPests = 15;

/// The progress bar while sheets are made, in steps of half a percent. It starts at the first step and returns to it.
class SheetBar
{
public:
    explicit SheetBar(QProgressBar &bar) : bar_(bar)
    {
        constexpr int maximum = 200;
        bar_.setRange(0, maximum);
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

} // namespace

InstructionEditorPage::InstructionEditorPage(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui)
    : PestMonPage(screen, host, ui), choice_(screen, host, ui)
{
    ui_.cmbPMethod->setTypingAllowed(false);
    reportFullNote(*ui_.txtPMNotes);
    addFocusKey(*ui_.dtpPestM, Qt::ALT | Qt::Key_D);
    ui_.dtpPestM->setToolTip(QStringLiteral("Date (Alt+D)"));
    on(&choice_, &InstructionChoice::changed, [this] { setSaved(false); });
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

void InstructionEditorPage::load()
{
    ui_.dtpPestM->setValue(basic::Clock::today());
    choice_.load();
    ui_.cmbPMethod->Clear();
    for (dao::Recordset rows = objPestMON().Get_PestMethod(); !rows.Eof(); rows.MoveNext()) {
        ui_.cmbPMethod->AddItem(rows.text("PMMethod"), rows.longValue("PMMethodID"));
    }
    Fill_Worker_Combo(*ui_.cmbPerson, objPestMON());
}

void InstructionEditorPage::setSaved(bool saved)
{
    ui_.cmdPALL->setVisible(saved);
    ui_.cmdExcel->setVisible(saved);
}

bool InstructionEditorPage::isSaved() const
{
    return !ui_.cmdPALL->isHidden();
}

void InstructionEditorPage::openNew()
{
    const controls::BusyPointer busy;
    SessionContext &values = session();
    const QDate today = basic::Clock::today();
    ui_.dtpPestM->setValue(today);
    values.CurrentPMDate = basic::SerialDate::fromDate(today);
    values.CurrentPMWeek = weekNumber(today);
    ui_.txtWeekNo->setText(QString::number(values.CurrentPMWeek));
    if (Clear_Instruction(objPestMON()) == clsPestMONNew::Failed) {
        showStoreFailure(QStringLiteral("The previous choice of blocks and pests could not be cleared"));
    }
    New_Instruction();
    enableFields();
}

void InstructionEditorPage::New_Instruction()
{
    SessionContext &values = session();
    values.CurrentNoofMpoints = 0;
    values.CurrentPMMethodID = 0;
    values.CurrentPMTransID = 0;
    // Left over from the previously selected row, it would complete the new instruction at its second save.
    values.CurrentPMCom = false;
    values.RepeatDone = true;
    ui_.txtPMNotes->clear();
    setSaved(false);
    ui_.chkRepeat->setChecked(true);
    ui_.cmbPerson->setText(QString());
    ui_.cmbPMethod->setText(QString());
    choice_.fill();
}

void InstructionEditorPage::enableFields()
{
    ui_.cmbPMethod->setEnabled(true);
    ui_.txtWeekNo->setEnabled(true);
    ui_.dtpPestM->setEnabled(true);
}

void InstructionEditorPage::showInstruction()
{
    const SessionContext &values = session();
    ui_.cmbPMethod->setText(values.CurrentPMMethod);
    ui_.dtpPestM->setValue(values.CurrentPMDate.date());
    ui_.cmbPerson->setText(values.CurrentPMPerson);
    showNote(*ui_.txtPMNotes, values.CurrentPMNotes);
    ui_.txtWeekNo->setText(QString::number(values.CurrentPMWeek));
    ui_.chkRepeat->setChecked(values.CurrentPMRepeat);
}

bool InstructionEditorPage::openSaved()
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
    choice_.fill();
    enableFields();
    return true;
}

void InstructionEditorPage::methodClick()
{
    runOrReport(QStringLiteral("The method could not be changed"), [&] {
        setSaved(false);
        session().CurrentPMMethodID = ui_.cmbPMethod->ItemData(ui_.cmbPMethod->ListIndex());
        session().CurrentPMMethod = ui_.cmbPMethod->Text();
    });
}

void InstructionEditorPage::dateChange()
{
    SessionContext &values = session();
    values.CurrentPMDate = basic::SerialDate::fromDate(ui_.dtpPestM->Value());
    values.CurrentPMWeek = weekNumber(ui_.dtpPestM->Value());
    ui_.txtWeekNo->setText(QString::number(values.CurrentPMWeek));
    values.CurrentPMPerson = ui_.cmbPerson->Text();
    values.CurrentPMNotes = ui_.txtPMNotes->text();
}

void InstructionEditorPage::cmdTSave()
{
    runOrReport(QStringLiteral("The instruction could not be saved"), [&] { save(); });
}

void InstructionEditorPage::save()
{
    SessionContext &values = session();
    values.CurrentPMDate = basic::SerialDate::fromDate(ui_.dtpPestM->Value());
    values.CurrentPMWeek =
        describingRange(QStringLiteral("The week number"), [&] { return basic::toInteger16(basic::Val(ui_.txtWeekNo->text())); });
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
    host().showStatus(QStringLiteral("%1 saved").arg(instructionName()));
    host().dialogs().message(QStringLiteral("The monitoring instruction was saved - Print the field forms !"));
}

void InstructionEditorPage::cmdTCancel()
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

bool InstructionEditorPage::mayPrint()
{
    controls::Dialogs &dialogs = host().dialogs();
    if (objPestMON().No_of_Pests(session().CurrentPMTransID) == 0) {
        dialogs.message(QStringLiteral("No pests are specified.\n\nSelect the pests to monitor."), QString(),
                        controls::BoxIcon::Exclamation);
        return false;
    }
    if (choice_.pestsChosen() > MaxPests
        && dialogs.question(QStringLiteral("Too many pests to monitor selected. Continue."), QString(), controls::Answer::No)
            == controls::Answer::No) {
        return false;
    }
    return dialogs.question(QStringLiteral("Print?"), QString(), controls::Answer::No) == controls::Answer::Yes;
}

void InstructionEditorPage::printSheets(Sheets sheets)
{
    if (!mayPrint()) {
        return;
    }
    const reports::FieldSheetOrder order{.instruction = session().CurrentPMTransID,
                                         .method = session().CurrentPMMethod,
                                         .completion = ui_.dtpPestM->Value(),
                                         .person = ui_.cmbPerson->Text(),
                                         .layout = reports::SheetLayout::Single};
    const LongWork work;
    const SheetBar bar(*ui_.ProgressBar1);
    const auto progress = [&bar](double percent) { bar.show(percent); };
    if (sheets == Sheets::PerBlock) {
        reports::printBlockSheets(host(), order, progress);
    } else {
        reports::Print_All_Blocks(host(), order, progress);
    }
}

} // namespace pestmon
