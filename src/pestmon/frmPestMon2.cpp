// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/frmPestMon2.h"

#include "common/WeekNumber.h"
#include "common/grid/modMousewheel.h"
#include "pestmon/CapturePage.h"
#include "pestmon/InstructionEditorPage.h"
#include "pestmon/InstructionListPage.h"
#include "screens/Icons.h"
#include "screens/ScrollableContents.h"
#include "store/clsPestMONNew.h"
#include "ui_frmPestMon2.h"

#include <QTabBar>

using pestmon::CapturePage;
using pestmon::InstructionEditorPage;
using pestmon::InstructionListPage;

frmPestMon2::frmPestMon2(ScreenHost &host, QWidget *parent) : ChildScreen(host, parent), ui_(std::make_unique<Ui::frmPestMon2>())
{
    ui_->setupUi(this);
    makeScrollable(*ui_->captureFormColumn, *ui_->captureFormLayout, Scrolling::DownOnly);
    makeScrollable(*ui_->tab1Layout, *ui_->tab1Content);
    ui_->tabBlock->hide();
    // The other tab is always disabled, so there is nothing to choose with the focus.
    ui_->tabBlock->setFocusPolicy(Qt::NoFocus);
    ui_->tabBlock->tabBar()->setFocusPolicy(Qt::NoFocus);
    list_ = std::make_unique<InstructionListPage>(*this, host, *ui_);
    editor_ = std::make_unique<InstructionEditorPage>(*this, host, *ui_);
    capture_ = std::make_unique<CapturePage>(*this, host, *ui_);
    setIcons();
    serveFocusedGrid(*this, {ui_->grdBlockIn, ui_->grdPest, ui_->grdPestIn});
    on(list_.get(), &InstructionListPage::addRequested, [this] { openNew(); });
    on(list_.get(), &InstructionListPage::editRequested, [this] { openSaved(); });
    on(list_.get(), &InstructionListPage::captureRequested, [this] { openCapture(); });
    on(editor_.get(), &InstructionEditorPage::closed, [this] { closeTab(); });
    on(capture_.get(), &CapturePage::closed, [this] { closeTab(); });
    on(ui_->Command1, &QPushButton::clicked, [this] { closeScreen(); });
    load();
}

frmPestMon2::~frmPestMon2() = default;

QString frmPestMon2::screenTitle() const
{
    return QStringLiteral("Pest Monitoring");
}

void frmPestMon2::load()
{
    editor_->load();
    list_->load();
}

void frmPestMon2::setIcons()
{
    ::setIcons({{ui_->cmdAdd, "add", "onacc"},
                {ui_->cmdEdit, "edit"},
                {ui_->cmdComp, "complete"},
                {ui_->cmdPdel, "delete", "danger"},
                {ui_->Command1, "close"},
                {ui_->cmdTSave, "save", "onacc"},
                {ui_->cmdPALL, "print"},
                {ui_->cmdExcel, "sheet"},
                {ui_->cmdTCancel, "close"},
                {ui_->cmdSaveTrans, "save", "onacc"},
                {ui_->cmdPP, "print"},
                {ui_->Command4, "close"}});
}

void frmPestMon2::activateScreen()
{
    if (!ui_->tabBlock->isHidden()) {
        activationPending_ = true;
        return;
    }
    activationPending_ = false;
    guarded([this] {
        editor_->blankCounts();
        list_->activate();
    });
}

/// As focus proxy the grid would come before the filters in the Tab order.
void frmPestMon2::focusInEvent(QFocusEvent *)
{
    ui_->grdGS->setFocus();
}

/// In a low window the fields of the capture come closer, so that all are in sight.
void frmPestMon2::resizeEvent(QResizeEvent *event)
{
    ChildScreen::resizeEvent(event);
    constexpr int low = 480;
    ui_->captureFormLayout->setVerticalSpacing(height() < low ? 5 : 6);
    QMargins margins = ui_->tab0Content->contentsMargins();
    margins.setTop(height() < low ? 6 : 12);
    margins.setBottom(height() < low ? 6 : 12);
    ui_->tab0Content->setContentsMargins(margins);
}

void frmPestMon2::showTab(Tab tab)
{
    ui_->fraBasic->setVisible(tab == Tab::Capture);
    ui_->Frame3->setVisible(tab == Tab::Instruction);
    ui_->Frame4->setVisible(tab == Tab::Instruction);
    // The page that is not shown would retain the height that it had with its contents.
    (tab == Tab::Capture ? ui_->tab1Layout : ui_->tab0Layout)->activate();
    const int shown = static_cast<int>(tab);
    ui_->tabBlock->setTabEnabled(shown, true);
    ui_->tabBlock->setTabEnabled(1 - shown, false);
    ui_->tabBlock->setCurrentIndex(shown);
    ui_->tabBlock->show();
    ui_->tabBlock->raise();
    // After the tab shows: a date of the list that loses its focus must find the tab open.
    ui_->fraGS->hide();
}

void frmPestMon2::closeTab()
{
    ui_->tabBlock->hide();
    ui_->fraGS->show();
    // A message of the page does not outlive it.
    host().showStatus({});
    list_->refresh(InstructionListPage::NoRowMeans::FirstDataRow);
    ui_->grdGS->setFocus();
    if (activationPending_) {
        activateScreen();
    }
}

void frmPestMon2::openNew()
{
    editor_->openNew();
    showTab(Tab::Instruction);
    ui_->cmbPMethod->setFocus();
}

void frmPestMon2::openSaved()
{
    capture_->clear();
    if (editor_->openSaved()) {
        showTab(Tab::Instruction);
        ui_->cmbPMethod->setFocus();
    }
}

void frmPestMon2::openCapture()
{
    capture_->clear();
    session().CurrentPMTransID = list_->currentRowKey();
    if (session().CurrentPMTransID == 0) {
        list_->askForRow();
        return;
    }
    list_->readCurrentRow();
    session().CurrentPMRepeat = list_->currentRowRepeats();
    session().CurrentPMWeek = weekNumber(list_->currentRowDate());
    capture_->open();
    showTab(Tab::Capture);
    ui_->cmbBlock->setFocus();
}
