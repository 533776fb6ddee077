// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/CapturePage.h"

#include "pestmon/modPestMon.h"
#include "platform/basic/Clock.h"
#include "platform/basic/Formats.h"
#include "platform/controls/BusyPointer.h"
#include "platform/controls/Dialogs.h"
#include "reports/FilledSheet.h"
#include "screens/LongWork.h"
#include "store/clsPestMONNew.h"
#include "ui_frmPestMon2.h"

#include <QSignalBlocker>

namespace pestmon
{

CapturePage::CapturePage(ChildScreen &screen, ScreenHost &host, Ui::frmPestMon2 &ui)
    : PestMonPage(screen, host, ui), grid_(screen, host, ui)
{
    ui_.cmbBlock->setTypingAllowed(false);
    reportFullNote(*ui_.txtPMMNotes);
    on(ui_.cmbBlock, &controls::ItemCombo::Click, [this] { blockClick(); });
    // What is typed next belongs into the first cell, which is framed already.
    connect(ui_.cmbBlock, &controls::ItemCombo::ChosenFromList, this, [this] {
        if (!grid_.editor().isOpen()) {
            ui_.grdPest->setFocus();
        }
    });
    on(ui_.chkPMCom, &QCheckBox::clicked, [this] { completedClick(); });
    on(ui_.cmdSaveTrans, &QPushButton::clicked, [this] { cmdSaveTrans(); });
    on(ui_.cmdPP, &QPushButton::clicked, [this] {
        if (settleCell()) {
            printFilledSheet();
        }
    });
    on(ui_.Command4, &QPushButton::clicked, [this] { close(); });
}

void CapturePage::open()
{
    const SessionContext &values = session();
    // A caption takes "&" for the sign before its access key.
    const QString note = QString(values.CurrentPMNotes).replace(u'&', QStringLiteral("&&"));
    ui_.fraBasic->setTitle(QStringLiteral("%1: %2").arg(basic::shortDate(values.CurrentPMDate.date()), note));
    fillBlocks();
    ui_.txtPMMethod->setText(values.CurrentPMMethod);
    ui_.dtpPMMTransDate->setValue(values.CurrentPMDate.date());
    ui_.txtPMPerson->setText(values.CurrentPMPerson);
    showNote(*ui_.txtPMMNotes, values.CurrentPMNotes);
    ui_.txtPMWeekNo->setText(QString::number(values.CurrentPMWeek));
    ui_.chkPMCom->setChecked(true);
    completedClick();
    ui_.grdPest->hide();
    ui_.lblNoBlock->setText(ui_.cmbBlock->ListCount() > 0
                                ? QStringLiteral("Select a block to enter its findings.")
                                : QStringLiteral("The instruction has no blocks. Close this tab, press Edit and select blocks."));
    ui_.lblNoBlock->show();
    ui_.cmbBlock->setEnabled(true);
}

void CapturePage::fillBlocks()
{
    ui_.cmbBlock->Clear();
    shownBlock_ = -1;
    dao::Recordset rows = objPestMON().New_Get_Blocks_For_Transaction(session().CurrentPMTransID);
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::int32_t block = rows.longValue("BlockID");
        const dao::Recordset found = objPestMON().Get_Block_byID(block);
        ui_.cmbBlock->AddItem(found.Eof() ? QString() : found.text("Block"), block);
    }
}

void CapturePage::blockClick()
{
    // The list names the block of the open cell until that is settled.
    const int chosen = ui_.cmbBlock->ListIndex();
    nameBlock(shownBlock_);
    if (!settleCell()) {
        ui_.txtG1->setFocus();
        return;
    }
    nameBlock(chosen);
    shownBlock_ = chosen;
    runOrReport(QStringLiteral("The block could not be shown"), [&] {
        session().CurrentBlockID = ui_.cmbBlock->ItemData(ui_.cmbBlock->ListIndex());
        grid_.Fill_Capture();
        ui_.lblNoBlock->hide();
        ui_.grdPest->show();
    });
}

void CapturePage::nameBlock(int index)
{
    const QSignalBlocker silent(ui_.cmbBlock);
    ui_.cmbBlock->setListIndex(index);
}

void CapturePage::completedClick()
{
    if (ui_.chkPMCom->isChecked()) {
        ui_.dtpPestMCom->setValue(basic::Clock::today());
        ui_.dtpPestMCom->show();
    }
}

bool CapturePage::settleCell()
{
    if (grid_.editor().leave()) {
        return true;
    }
    const auto answer =
        host().dialogs().question(QStringLiteral("The value \"%1\" could not be saved. Go on without it?").arg(ui_.txtG1->text()),
                                  QString(), controls::Answer::No);
    if (answer != controls::Answer::Yes) {
        return false;
    }
    // The cell and its total may show what was not saved; the next total would count it.
    grid_.editor().close();
    runOrReport(QStringLiteral("The block could not be shown"), [&] { grid_.Fill_Capture(); });
    return true;
}

void CapturePage::cmdSaveTrans()
{
    if (settleCell()) {
        runOrReport(QStringLiteral("The instruction could not be saved"), [&] { save(); });
    }
}

void CapturePage::save()
{
    const controls::BusyPointer busy;
    SessionContext &values = session();
    values.CurrentPMCom = ui_.chkPMCom->isChecked();
    if (values.CurrentPMCom) {
        values.CurrentPMDateCom = basic::SerialDate::fromDate(ui_.dtpPestMCom->Value());
    }
    values.CurrentPMNotes = ui_.txtPMMNotes->text();
    const auto status = objPestMON().New_Save_PMTrans(values.CurrentPMTransID, values.CurrentPMMethodID, values.CurrentPMDate,
                                                      values.CurrentPMNotes, values.CurrentPMPerson, values.CurrentPMWeek,
                                                      values.CurrentPMDateCom, values.CurrentPMCom, values.CurrentPMRepeat);
    const QString name = instructionName();
    if (status == clsPestMONNew::Failed) {
        showStoreFailure(QStringLiteral("%1 could not be saved").arg(name));
        return;
    }
    QString saved =
        values.CurrentPMCom ? QStringLiteral("%1 saved as completed").arg(name) : QStringLiteral("%1 saved").arg(name);
    bool repeated = true;
    if (!values.RepeatDone && values.CurrentPMRepeat) {
        repeated = runOrReport(QStringLiteral("The repeated instruction could not be issued"), [&] {
            if (Repeat_Instruction(values, objPestMON()) == clsPestMONNew::Failed) {
                throw objPestMON().lastError().value_or(basic::RunTimeError(0, QString()));
            }
        });
        saved += QStringLiteral(", repeated instruction issued");
    }
    // A successor that could not be issued is issued by the next save.
    if (repeated) {
        values.RepeatDone = true;
        host().showStatus(saved);
    }
}

void CapturePage::printFilledSheet()
{
    const LongWork work;
    reports::Print_Filled_Sheet(host(),
                                {.block = ui_.cmbBlock->Text(),
                                 .completed = ui_.dtpPestMCom->Value(),
                                 .week = ui_.txtPMWeekNo->text(),
                                 .person = ui_.txtPMPerson->text(),
                                 .note = ui_.txtPMMNotes->text(),
                                 .rows = grid_.shownRows()});
}

void CapturePage::close()
{
    if (settleCell()) {
        Q_EMIT closed();
    }
}

} // namespace pestmon
