// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmMonLeave.h"

#include "analysis/AnalysisBrowser.h"
#include "analysis/AnalysisNumbers.h"
#include "analysis/AnalysisPanel.h"
#include "analysis/AnalysisSheet.h"
#include "common/grid/modMousewheel.h"
#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/Dialogs.h"
#include "screens/GridActions.h"
#include "screens/Icons.h"
#include "ui_frmMonLeave.h"

#include <QKeyEvent>

#include <algorithm>

using controls::FlexGrid;
using controls::ItemCombo;

frmMonLeave::frmMonLeave(ScreenHost &host, QWidget *parent) : ChildScreen(host, parent), ui_(std::make_unique<Ui::frmMonLeave>())
{
    ui_->setupUi(this);
    ui_->picFarm->setAttribute(Qt::WA_StyledBackground);
    browser_ = std::make_unique<AnalysisBrowser>(host, *ui_);
    panel_ = std::make_unique<AnalysisPanel>(*ui_, session());
    listBottom_ = ui_->listLayout->contentsMargins().bottom();
    serveFocusedGrid(*this, {ui_->grdLeave});
    setIcons();
    arrangeFilters();
    connectList();
    connectPanel();
}

frmMonLeave::~frmMonLeave() = default;

QString frmMonLeave::screenTitle() const
{
    const AnalysisKind *kind = analysisKind(Tag());
    return kind ? kind->formCaption.toString() : windowTitle();
}

void frmMonLeave::setIcons()
{
    ::setIcons({{ui_->Command7, "add", "onacc"},
                {ui_->cmdEdit, "edit"},
                {ui_->cmdLeaveDEl, "delete", "danger"},
                {ui_->cmdExcel, "sheet"},
                {ui_->cmdClose, "close"},
                {ui_->cmdResetFilter, "reset-filter"},
                {ui_->Command3, "save", "onacc"},
                {ui_->cmdRetAdd, "close"}});
}

void frmMonLeave::connectList()
{
    on(ui_->grdLeave, &FlexGrid::Click, [this] { browser_->selectRow(); });
    on(ui_->grdLeave, &FlexGrid::DblClick, [this] { openSaved(); });
    on(ui_->grdLeave, &FlexGrid::cellMoved, [this](int row, int) { browser_->movedByKey(row); });
    addGridAction(*ui_->grdLeave, *ui_->cmdEdit, {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2});
    addGridAction(*ui_->grdLeave, *ui_->Command7, {Qt::Key_Insert});
    addGridAction(*ui_->grdLeave, *ui_->cmdLeaveDEl, {Qt::Key_Delete});
    addGridAction(*ui_->grdLeave, *ui_->cmdExcel);
    on(ui_->cboGroup, &ItemCombo::Click, [this] { browser_->cropChosen(AnalysisBrowser::CropLevel::Group); });
    on(ui_->cboType, &ItemCombo::Click, [this] { browser_->cropChosen(AnalysisBrowser::CropLevel::Type); });
    on(ui_->cboVariety, &ItemCombo::Click, [this] { browser_->cropChosen(AnalysisBrowser::CropLevel::Variety); });
    on(ui_->cmbBlock, &ItemCombo::Click, [this] { browser_->Apply_LeaveFilter(); });
    on(ui_->cmdResetFilter, &QPushButton::clicked, [this] { browser_->resetFilter(); });
    on(ui_->opActive, &QRadioButton::clicked, [this] { browser_->showActive(true); });
    on(ui_->opInActive, &QRadioButton::clicked, [this] { browser_->showActive(false); });
    on(ui_->dtpDateFrom, &controls::DatePicker::Change, [this] { browser_->periodChanged(); });
    on(ui_->dtpDateTo, &controls::DatePicker::Change, [this] { browser_->periodChanged(); });
    on(ui_->dtpDateFrom, &controls::DatePicker::LostFocus, [this] { browser_->storePeriodStart(); });
    on(ui_->Command7, &QPushButton::clicked, [this] { openNew(); });
    on(ui_->cmdEdit, &QPushButton::clicked, [this] { openSaved(); });
    on(ui_->cmdLeaveDEl, &QPushButton::clicked, [this] { deleteAnalysis(); });
    on(ui_->cmdExcel, &QPushButton::clicked, [this] { print(); });
    on(ui_->cmdClose, &QPushButton::clicked, [this] { closeScreen(); });
}

void frmMonLeave::connectPanel()
{
    on(panel_.get(), &AnalysisPanel::pasteTooLong, [this](int values, int boxes) {
        host().showFailure(QStringLiteral("%1 values were pasted into %2 fields; the last %3 were left out")
                               .arg(values)
                               .arg(boxes)
                               .arg(values - boxes));
    });
    on(ui_->Command3, &QPushButton::clicked, [this] { save(); });
    on(ui_->cmdRetAdd, &QPushButton::clicked, [this] { closePanel(); });
    // Esc closes the panel unless a field, list or calendar handles it.
    ui_->fraAddL->installEventFilter(this);
}

void frmMonLeave::activateScreen()
{
    if (panel_->isOpen()) {
        activationPending_ = true;
        return;
    }
    activationPending_ = false;
    session().ShowActive = -1;
    panel_->clearChanged();
    runOrReport(QStringLiteral("The analyses cannot be listed"), [this] {
        kind_ = analysisKind(Tag());
        browser_->setKind(kind_);
        // Before anything that may fail, so that at least the captions are right.
        applyKind();
        browser_->load();
        browser_->fill();
        browser_->selectFirst();
    });
}

void frmMonLeave::applyKind()
{
    if (!kind_) {
        return;
    }
    setWindowTitle(kind_->formCaption.toString());
    ui_->screenTitle->setText(kind_->frameCaption.toString());
    ui_->formCaption->setText(kind_->formCaption.toString());
    setLabelIcon(*ui_->Image2, BannerIcon, kind_->icon.toString());
    ui_->grdLeave->setAccessibleName(kind_->formCaption.toString());
    panel_->setKind(*kind_);
}

void frmMonLeave::openNew()
{
    panel_->openNew();
    showPanel();
}

bool frmMonLeave::readCurrentRow()
{
    FlexGrid &grid = *ui_->grdLeave;
    grid.setCol(AnalysisKeyCol);
    const int row = grid.Row();
    const QVariant date = grid.cellValue(row, DateCol);
    if (row == 0 || grid.Text().isEmpty()) {
        return false;
    }
    AnalysisRecord record;
    record.ID = basic::toLong32(basic::Val(grid.Text()));
    session().CurrentPlantBlockID = basic::toLong32(basic::Val(grid.TextMatrix(row, PlantingCol)));
    if (!date.isValid()) {
        throw basic::RunTimeError(basic::ErrorNumber::TypeMismatch, QStringLiteral("It has no date."));
    }
    record.Date = date.value<basic::SerialDate>();
    record.Part = grid.TextMatrix(row, PartOrDepthCol);
    record.Depth = leadingSingle(record.Part);
    record.Season = grid.TextMatrix(row, SeasonCol);
    for (std::size_t i = 0; i < AnalysisBoxes; ++i) {
        record.*AnalysisValues[i] = leadingSingle(grid.TextMatrix(row, FirstValueCol + static_cast<int>(i)));
    }
    session().CurrentAnalysis = record;
    return true;
}

void frmMonLeave::openSaved()
{
    runOrReport(QStringLiteral("The analysis cannot be edited"), [this] {
        if (readCurrentRow()) {
            panel_->openSaved(ui_->grdLeave->TextMatrix(ui_->grdLeave->Row(), BlockCol));
            showPanel();
        }
    });
}

void frmMonLeave::showPanel()
{
    setListLocked(true);
    placePanel();
    ui_->grdLeave->showCell(ui_->grdLeave->Row(), BlockCol);
}

/// The grid remains readable: it accepts neither mouse nor focus, but is not dimmed.
void frmMonLeave::setListLocked(bool locked)
{
    ui_->filterStrip->setEnabled(!locked);
    ui_->barLeave->setEnabled(!locked);
    ui_->grdLeave->setAttribute(Qt::WA_TransparentForMouseEvents, locked);
    ui_->grdLeave->setFocusPolicy(locked ? Qt::NoFocus : Qt::TabFocus);
}

/// In one line where the chosen entries can be read in it, else in two.
void frmMonLeave::arrangeFilters()
{
    constexpr int lineGap = 24;
    constexpr int rowGap = 8;
    const QMargins margins = ui_->listLayout->contentsMargins();
    const int lists = ui_->filterLists->minimumSize().width();
    const int period = ui_->filterPeriod->minimumSize().width();
    // Or one line would keep the screen as wide as it is.
    ui_->filterStrip->setMinimumWidth(std::max(lists, period));
    const bool fits = lists + lineGap + period <= width() - margins.left() - margins.right();
    ui_->filterLayout->setDirection(fits ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    ui_->filterLayout->setSpacing(fits ? lineGap : rowGap);
}

/// Over the lower part of the list, which ends above it, so that the selected row stays in view and no row is cut. Where that
/// leaves the grid too little, the locked filters make way.
void frmMonLeave::placePanel()
{
    constexpr int gap = 8;
    constexpr int usualGrid = 150;
    constexpr int leastGrid = 73;
    constexpr int leastBelowFilters = 100;
    QLayout &list = *ui_->listLayout;
    QMargins margins = list.contentsMargins();
    margins.setBottom(listBottom_);
    ui_->grdLeave->setMinimumHeight(panel_->isOpen() ? leastGrid : usualGrid);
    if (!panel_->isOpen()) {
        ui_->filterStrip->show();
        list.setContentsMargins(margins);
        return;
    }
    const QRect area = ui_->fraBasic->rect().marginsRemoved(margins);
    QWidget &panel = *ui_->fraAddL;
    const int width = panel_->fitBoxes(area.width());
    const QSize size(width, panel.sizeHint().height());
    const QPoint bottom(area.left(), ui_->barLeave->y() - listBottom_);
    panel.setGeometry(QRect(ui_->fraBasic->mapTo(this, bottom) - QPoint(0, size.height()), size));
    margins.setBottom(listBottom_ + size.height() + gap);
    list.setContentsMargins(margins);
    const int top = ui_->screenTitle->isHidden() ? 0 : ui_->screenTitle->geometry().bottom();
    const int space =
        bottom.y() - size.height() - gap - top - margins.top() - ui_->filterStrip->sizeHint().height() - list.spacing();
    ui_->filterStrip->setVisible(space >= leastBelowFilters);
}

/// As focus proxy the grid would come before the filters in the Tab order.
void frmMonLeave::focusInEvent(QFocusEvent *)
{
    ui_->grdLeave->setFocus();
}

void frmMonLeave::resizeEvent(QResizeEvent *event)
{
    ChildScreen::resizeEvent(event);
    arrangeFilters();
    // After the layout has moved the grid.
    QMetaObject::invokeMethod(this, &frmMonLeave::placePanel, Qt::QueuedConnection);
}

bool frmMonLeave::save()
{
    panel_->settle();
    if (session().CurrentPlantBlockID == 0) {
        dialogs().message(QStringLiteral("Please select a block."));
        ui_->cboBlock->setFocus();
        return false;
    }
    if (!kind_) {
        return false;
    }
    panel_->read();
    const AnalysisRecord &record = session().CurrentAnalysis;
    std::int32_t key = record.ID;
    const auto write = record.ID != 0 ? kind_->save : kind_->add;
    if (write(objPestMON(), key, session().CurrentPlantBlockID, record) != clsPestMONNew::Done) {
        showStoreFailure(QStringLiteral("%1 could not be saved").arg(kind_->name));
        dialogs().message(QStringLiteral("Could not add / edit the analysis"));
        return false;
    }
    host().showStatus(QStringLiteral("%1 of %2, %3, saved")
                          .arg(kind_->name, ui_->cboBlock->Text(), basic::formatDate(record.Date, u"yyyy/MM/dd")));
    try {
        browser_->fill();
        browser_->reposition();
        browser_->Apply_LeaveFilter();
    } catch (const basic::RunTimeError &) {
        // The analysis is stored: saved again from an open panel, a new one would be stored twice.
        hidePanel();
        throw;
    }
    hidePanel();
    return true;
}

void frmMonLeave::closePanel()
{
    panel_->settle();
    if (panel_->Changed()
        && dialogs().question(QStringLiteral("Do you want to save the changes?"), QStringLiteral("Save Changes"),
                              controls::Answer::Yes)
            == controls::Answer::Yes) {
        save();
    }
    hidePanel();
    browser_->reposition();
}

void frmMonLeave::hidePanel()
{
    panel_->close();
    placePanel();
    setListLocked(false);
    ui_->grdLeave->setFocus();
    if (activationPending_) {
        activateScreen();
    }
}

void frmMonLeave::deleteAnalysis()
{
    AnalysisRecord &record = session().CurrentAnalysis;
    if (kind_ && kind_->remove && record.ID != 0) {
        if ((objPestMON().*kind_->remove)(record.ID) == clsPestMONNew::Failed) {
            showStoreFailure(QStringLiteral("%1 could not be deleted").arg(kind_->name));
            dialogs().message(QStringLiteral("Could not delete the analysis"));
            return;
        }
        host().showStatus(QStringLiteral("%1 deleted").arg(kind_->name));
        dialogs().message(QStringLiteral("The analysis was deleted"));
    }
    browser_->fill();
}

void frmMonLeave::print()
{
    if (!kind_) {
        return;
    }
    AnalysisSheet sheet = analysisSheet(*ui_->grdLeave, *kind_);
    sheet.farm = session().CurrentFarm;
    sheet.from = ui_->dtpDateFrom->Value();
    sheet.to = ui_->dtpDateTo->Value();
    printAnalyses(host(), sheet);
}

bool frmMonLeave::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent *>(event)->key() != Qt::Key_Escape) {
        return ChildScreen::eventFilter(watched, event);
    }
    guarded([this] { closePanel(); });
    return true;
}
