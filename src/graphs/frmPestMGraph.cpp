// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/frmPestMGraph.h"

#include "common/MonitoringConstants.h"
#include "graphs/GraphDrawing.h"
#include "graphs/GraphError.h"
#include "graphs/GraphPane.h"
#include "platform/controls/Theme.h"
#include "screens/LongWork.h"
#include "screens/Period.h"
#include "screens/ScrollableContents.h"
#include "store/clsPestMONNew.h"
#include "ui_frmPestMGraph.h"

#include <QElapsedTimer>
#include <QResizeEvent>
#include <QShortcut>

using controls::ItemCombo;

namespace
{

constexpr std::int16_t LargestFirst = 1;
constexpr std::int16_t SmallestFirst = 2;

void setRetainedWhenHidden(QWidget &widget, bool retained)
{
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(retained);
    widget.setSizePolicy(policy);
}

/// Radio buttons below each other begin at the same position.
void alignColumn(std::initializer_list<QWidget *> column)
{
    int width = 0;
    for (QWidget *widget : column) {
        widget->ensurePolished();
        width = std::max(width, widget->sizeHint().width());
    }
    for (QWidget *widget : column) {
        widget->setMinimumWidth(width);
    }
}

} // namespace

frmPestMGraph::frmPestMGraph(ScreenHost &host, QWidget *parent)
    : ChildScreen(host, parent), ui_(std::make_unique<Ui::frmPestMGraph>())
{
    ui_->setupUi(this);
    makeScrollable(*ui_->criteriaLayout, *ui_->criteriaContents, Scrolling::DownOnly);
    cbo_ = {ui_->cbo0, ui_->cbo1, ui_->cbo2, ui_->cbo3, ui_->cbo4};
    captions_ = {ui_->lbl_11, ui_->lbl_12, ui_->lbl_13, ui_->lbl_14, ui_->lbl_15};
    if (session().CurrentSDate.isEmpty()) {
        readPeriodStart(host);
    }
    setUpLists();
    setUpButtons();
    connectCriteria();
    pane_ = std::make_unique<GraphPane>(*ui_, *this, host);
}

frmPestMGraph::~frmPestMGraph() = default;

/// The boxes of the smallest and largest sums: under the block, or in a low window next to Draw Graph.
void frmPestMGraph::placeRank(bool nextToDraw)
{
    constexpr int row = 3;
    QHBoxLayout *rank = ui_->rankLayout;
    QLayout *wanted = nextToDraw ? static_cast<QLayout *>(ui_->drawLayout) : ui_->criteriaFormLayout;
    if (rank->parent() == wanted) {
        return;
    }
    static_cast<QLayout *>(rank->parent())->removeItem(rank);
    rank->setParent(nullptr);
    if (nextToDraw) {
        ui_->drawLayout->insertLayout(0, rank);
    } else {
        ui_->criteriaFormLayout->addLayout(rank, row, 1);
    }
}

/// The criteria come closer in a low window, so that all are in sight.
void frmPestMGraph::resizeEvent(QResizeEvent *event)
{
    ChildScreen::resizeEvent(event);
    constexpr int usual = 560;
    constexpr int low = 480;
    const bool isCompact = height() < usual;
    const int field = height() < low ? 24 : 26;
    const QString sheet =
        QStringLiteral("QGroupBox { padding: 30px 10px 8px 12px; } QGroupBox::title { top: 8px; left: 10px; }"
                       "QComboBox, QLineEdit { min-height: %1px; } QComboBox:focus, QLineEdit:focus { min-height: %2px; }"
                       "QComboBox QLineEdit, QComboBox QLineEdit:focus { min-height: 0; }"
                       "QRadioButton, QCheckBox { min-height: %3px; }")
            .arg(field)
            .arg(field - 2)
            .arg(field - 4);
    if (const QString wanted = isCompact ? sheet : QString(); wanted != ui_->fmeDisplay_0->styleSheet()) {
        ui_->fmeDisplay_0->setStyleSheet(wanted);
    }
    for (QHBoxLayout *row : {ui_->scopeLayout, ui_->measureLayout, ui_->axisLayout}) {
        row->setSpacing(height() < low ? 2 : 8);
    }
    ui_->criteriaFormLayout->setVerticalSpacing(height() < low ? 2 : 4);
    placeRank(height() < low);
    QMargins margins = ui_->contentLayout->contentsMargins();
    margins.setBottom(height() < low ? 8 : 16);
    ui_->contentLayout->setContentsMargins(margins);
    // What is hidden takes no space then.
    std::vector<QWidget *> hideable{ui_->cmbBCount, ui_->Label2_1, ui_->chk_2, ui_->chk_3};
    hideable.insert(hideable.end(), cbo_.begin(), cbo_.end());
    hideable.insert(hideable.end(), captions_.begin(), captions_.end());
    for (QWidget *widget : hideable) {
        setRetainedWhenHidden(*widget, !isCompact);
    }
}

QString frmPestMGraph::screenTitle() const
{
    return QStringLiteral("Pest Montitor Graph");
}

void frmPestMGraph::setUpLists()
{
    ui_->opt_0->setChecked(true);
    ui_->OptType_0->setChecked(true);
    ui_->OptW_0->setChecked(true);
    alignColumn({ui_->opt_0, ui_->OptType_0, ui_->OptW_0});
    alignColumn({ui_->opt_1, ui_->OptType_1, ui_->OptW_1});
    ui_->cmbBCount->setTypingAllowed(false);
    ui_->cbo_6->setTypingAllowed(false);
    for (const ChartKind &kind : chartKinds()) {
        ui_->cbo_6->AddItem(QLatin1String(kind.text));
    }
    // The list begins with its first entry while the chart is a flat bar chart; silent, so the chart stays.
    ui_->cbo_6->setText(ui_->cbo_6->List(0));
    for (std::size_t index = 0; index < cbo_.size(); ++index) {
        setRetainedWhenHidden(*cbo_[index], true);
        setRetainedWhenHidden(*captions_[index], true);
    }
    for (QWidget *widget : std::initializer_list<QWidget *>{ui_->cmbBCount, ui_->Label2_1, ui_->chk_2, ui_->chk_3, ui_->OptW_2,
                                                            ui_->VScroll, ui_->HScroll, ui_->pic_1}) {
        setRetainedWhenHidden(*widget, true);
    }
}

void frmPestMGraph::setUpButtons()
{
    using controls::Theme;
    ui_->cmd_0->setIcon(Theme::icon(QStringLiteral("graphs"), QStringLiteral("onacc")));
    ui_->cmd_2->setIcon(Theme::icon(QStringLiteral("zoom-in")));
    ui_->cmd_3->setIcon(Theme::icon(QStringLiteral("zoom-out")));
    ui_->cmd_5->setIcon(Theme::icon(QStringLiteral("setup")));
    ui_->cmd_4->setIcon(Theme::icon(QStringLiteral("print")));
    ui_->cmd_1->setIcon(Theme::icon(QStringLiteral("close")));
}

void frmPestMGraph::connectCriteria()
{
    const auto clicked = [this](QAbstractButton *button, auto handler) {
        connect(button, &QAbstractButton::clicked, this, [this, handler] { guarded(handler); });
    };
    clicked(ui_->opt_0, [this] { scopeClick(GraphScope::PerBlock); });
    clicked(ui_->opt_1, [this] { scopeClick(GraphScope::PerPest); });
    clicked(ui_->opt_2, [this] { scopeClick(GraphScope::Farm); });
    clicked(ui_->OptType_0, [this] { measureClick(); });
    clicked(ui_->OptType_1, [this] { measureClick(); });
    clicked(ui_->chk_2, [this] { rankClick(true); });
    clicked(ui_->chk_3, [this] { rankClick(false); });
    clicked(ui_->cmd_0, [this] { drawClick(); });
    connect(ui_->cmbBCount, &ItemCombo::Click, this, [this] { guarded([this] { fixedItemClick(); }); });
    connect(ui_->dtpDateFrom, &controls::DatePicker::LostFocus, this, [this] {
        guarded([this] {
            storePeriodStart(session(), *ui_->dtpDateFrom);
            periodLeft();
        });
    });
    connect(ui_->dtpDateTo, &controls::DatePicker::LostFocus, this, [this] { guarded([this] { periodLeft(); }); });
    connect(new QShortcut(Qt::Key_Insert, this), &QShortcut::activated, this, [this] { guarded([this] { drawClick(); }); });
}

void frmPestMGraph::activateScreen()
{
    showPeriod(host(), *ui_->dtpDateFrom, *ui_->dtpDateTo);
    pane_->activate();
    session().CurrentPMMethodID = CountMethod;
    session().GraphRankMode = 0;
    for (QCheckBox *box : {ui_->chk_2, ui_->chk_3}) {
        box->show();
        box->setChecked(false);
    }
    ui_->opt_0->setChecked(true);
    guarded([this] { scopeClick(GraphScope::PerBlock); });
}

GraphScope frmPestMGraph::scope() const
{
    return ui_->opt_0->isChecked() ? GraphScope::PerBlock : ui_->opt_1->isChecked() ? GraphScope::PerPest : GraphScope::Farm;
}

GraphListPeriod frmPestMGraph::period() const
{
    return {ui_->dtpDateFrom->Value(), ui_->dtpDateTo->Value(), session().GraphRankMode};
}

void frmPestMGraph::scopeClick(GraphScope scope)
{
    if (scope == GraphScope::Farm) {
        ui_->cmbBCount->hide();
        ui_->Label2_1->hide();
        fixedItemClick();
        offerPoints(false);
        return;
    }
    ItemCombo *const fixedItem[] = {ui_->cmbBCount};
    const bool perBlock = scope == GraphScope::PerBlock;
    if (perBlock) {
        session().CurrentCTargetID = 0;
        Fill_Graph_Blocks(fixedItem, objPestMON(), session(), period());
    } else {
        Fill_Graph_Pests(fixedItem, objPestMON(), session(), 0, period());
    }
    hideSeries();
    ui_->Label2_1->setText(perBlock ? QStringLiteral("Block:") : QStringLiteral("Pest:"));
    ui_->cmbBCount->setAccessibleName(ui_->Label2_1->text());
    ui_->Label2_1->show();
    ui_->cmbBCount->show();
    offerPoints(perBlock);
}

void frmPestMGraph::fixedItemClick()
{
    switch (scope()) {
    case GraphScope::PerBlock:
        session().CurrentBlockID = ui_->cmbBCount->ItemData(ui_->cmbBCount->ListIndex());
        Fill_Graph_Pests(cbo_, objPestMON(), session(), session().CurrentBlockID, period());
        offerSeries(QStringLiteral("Pest"));
        return;
    case GraphScope::PerPest:
        session().CurrentCTargetID = ui_->cmbBCount->ItemData(ui_->cmbBCount->ListIndex());
        Fill_Graph_Blocks(cbo_, objPestMON(), session(), period());
        offerSeries(QStringLiteral("Block"));
        return;
    case GraphScope::Farm:
        session().CurrentBlockID = 0;
        Fill_Graph_Pests(cbo_, objPestMON(), session(), 0, period());
        offerSeries(QStringLiteral("Pest"));
        ui_->OptW_2->hide();
    }
}

void frmPestMGraph::offerSeries(const QString &caption)
{
    for (std::size_t index = 0; index < cbo_.size(); ++index) {
        captions_[index]->setText(QStringLiteral("%1 %2").arg(caption, QString::number(index + 1)));
        cbo_[index]->setAccessibleName(captions_[index]->text());
        captions_[index]->show();
        cbo_[index]->show();
    }
    preselect(cbo_);
    ui_->chk_2->show();
    ui_->chk_3->show();
}

void frmPestMGraph::hideSeries()
{
    for (std::size_t index = 0; index < cbo_.size(); ++index) {
        captions_[index]->hide();
        cbo_[index]->hide();
    }
    ui_->chk_2->hide();
    ui_->chk_3->hide();
}

void frmPestMGraph::offerPoints(bool offered)
{
    if (!offered && ui_->OptW_2->isChecked()) {
        ui_->OptW_0->setChecked(true);
    }
    ui_->OptW_2->setVisible(offered);
}

void frmPestMGraph::drawClick()
{
    const bool noText = ui_->cmbBCount->Text().isEmpty();
    if (noText && scope() != GraphScope::Farm) {
        // Before the box: after it the window may not be active yet, and a date field would keep the focus.
        ui_->cmbBCount->setFocus();
        dialogs().message(scope() == GraphScope::PerBlock ? QStringLiteral("Select a block!") : QStringLiteral("Select a pest!"),
                          QStringLiteral("Pest graph"), controls::BoxIcon::Information);
        return;
    }
    Draw_Graph();
    pane_->fitAfterDraw();
}

void frmPestMGraph::Draw_Graph()
{
    try {
        const GraphCriteria wanted = criteria();
        if (wanted.SeriesCount == 0) {
            dialogs().message(QStringLiteral("No data to dispay"));
            return;
        }
        pane_->draw(readWithProgress(wanted), wanted);
    } catch (const basic::RunTimeError &error) {
        showGraphError(dialogs(), error);
    }
}

chart::DataTable frmPestMGraph::readWithProgress(const GraphCriteria &wanted)
{
    constexpr qint64 quickMilliseconds = 1000;
    constexpr int all = 100;
    const LongWork work;
    std::optional<LongWorkWithProgress> slowWork;
    QElapsedTimer elapsed;
    elapsed.start();
    return readGraphData(wanted, objPestMON(), session(), [&](int series) {
        if (elapsed.elapsed() < quickMilliseconds) {
            return;
        }
        if (!slowWork) {
            slowWork.emplace(host());
        }
        Show_Progress(host(), static_cast<std::int16_t>((series - 1) * all / wanted.SeriesCount), QStringLiteral("Graph"));
    });
}

void frmPestMGraph::measureClick()
{
    session().CurrentPMMethodID = ui_->OptType_0->isChecked() ? CountMethod : YesNoMethod;
    if (!ui_->cmbBCount->isHidden() && !ui_->cmbBCount->Text().isEmpty()) {
        fixedItemClick();
    } else {
        scopeClick(scope());
    }
}

void frmPestMGraph::rankClick(bool smallest)
{
    QCheckBox &box = smallest ? *ui_->chk_2 : *ui_->chk_3;
    QCheckBox &other = smallest ? *ui_->chk_3 : *ui_->chk_2;
    if (box.isChecked()) {
        session().GraphRankMode = smallest ? SmallestFirst : LargestFirst;
        fixedItemClick();
        other.setChecked(false);
    }
    if (!box.isChecked() && !other.isChecked()) {
        session().GraphRankMode = 0;
        fixedItemClick();
    }
}

void frmPestMGraph::periodLeft()
{
    if (!ui_->cmbBCount->Text().isEmpty() && scope() != GraphScope::Farm) {
        scopeClick(scope());
    }
}

GraphCriteria frmPestMGraph::criteria() const
{
    GraphCriteria wanted{.scope = scope(),
                         .measure = ui_->OptType_0->isChecked() ? GraphMeasure::Count : GraphMeasure::YesNo,
                         .axis = ui_->OptW_0->isChecked() ? GraphAxis::Week
                             : ui_->OptW_1->isChecked()   ? GraphAxis::Date
                                                          : GraphAxis::Points,
                         .from = ui_->dtpDateFrom->Value(),
                         .to = ui_->dtpDateTo->Value()};
    for (std::size_t index = 0; index < cbo_.size(); ++index) {
        const ItemCombo &combo = *cbo_[index];
        if (!combo.Text().isEmpty()) {
            wanted.SeriesID[index] = combo.ItemData(combo.ListIndex());
            wanted.SeriesName[index] = combo.Text();
            wanted.SeriesCount = static_cast<int>(index) + 1;
        }
    }
    if (wanted.SeriesCount > 0 && wanted.scope != GraphScope::Farm) {
        wanted.fixedItem = ui_->cmbBCount->ItemData(ui_->cmbBCount->ListIndex());
    }
    return wanted;
}
