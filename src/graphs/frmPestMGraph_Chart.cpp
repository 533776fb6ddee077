// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/GraphDrawing.h"
#include "graphs/GraphError.h"
#include "graphs/GraphPrint.h"
#include "graphs/frmGraphEdit.h"
#include "graphs/frmPestMGraph.h"
#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/BusyPointer.h"
#include "store/clsPestMONNew.h"
#include "ui_frmPestMGraph.h"

#include <QDir>
#include <QEvent>

#include <cmath>

namespace
{

constexpr int TwipsPerPixel = 15;

int pixels(std::int32_t twips)
{
    return static_cast<int>(std::lround(static_cast<double>(twips) / TwipsPerPixel));
}

} // namespace

void frmPestMGraph::connectChart()
{
    connect(ui_->cbo_6, &controls::ItemCombo::Click, this, [this] { guarded([this] { chartTypeClick(); }); });
    connect(ui_->chk_0, &QCheckBox::clicked, this, [this](bool show) { showGraphMarkers(ui_->chGraph->model(), show); });
    connect(ui_->chk_1, &QCheckBox::clicked, this, [this](bool show) { showGraphLabels(ui_->chGraph->model(), show); });
    connect(ui_->cmd_2, &QPushButton::clicked, this, [this] { guarded([this] { zoomIn(); }); });
    connect(ui_->cmd_3, &QPushButton::clicked, this, [this] { guarded([this] { zoomOut(); }); });
    connect(ui_->cmd_4, &QPushButton::clicked, this, [this] { printGraph(); });
    connect(ui_->cmd_5, &QPushButton::clicked, this, [this] { setUpStyles(); });
    connect(ui_->cmd_1, &QPushButton::clicked, this, [this] { closeScreen(); });
    connect(ui_->HScroll, &QScrollBar::valueChanged, this, [this](int value) {
        zoom_.scrollHorizontally(value);
        placeChart();
    });
    connect(ui_->VScroll, &QScrollBar::valueChanged, this, [this](int value) {
        zoom_.scrollVertically(value, ui_->VScroll->maximum(), viewport());
        placeChart();
    });
    // Not around the chart itself, which may be far larger than its visible part.
    ui_->focusEdge->setAttribute(Qt::WA_TransparentForMouseEvents);
    ui_->focusEdge->raise();
    ui_->focusEdge->hide();
    connect(ui_->chGraph, &chart::ChartView::PointSelected, this,
            [this](int series, int point) { guarded([this, series, point] { pointSelected(series, point); }); });
    connect(ui_->chGraph, &chart::ChartView::Click, this, [this] { chartClick(); });
}

bool frmPestMGraph::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == ui_->pic_0 && event->type() == QEvent::Resize) {
        refitChart();
    }
    if (watched == ui_->chGraph && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
        ui_->focusEdge->setVisible(event->type() == QEvent::FocusIn);
    }
    return ChildScreen::eventFilter(watched, event);
}

void frmPestMGraph::refitChart()
{
    const int belowSight = ui_->VScroll->maximum() - ui_->VScroll->value();
    zoom_.refit(viewport());
    setScrollRanges();
    ui_->VScroll->setValue(ui_->VScroll->maximum() - belowSight);
    zoom_.scrollHorizontally(ui_->HScroll->value());
    zoom_.scrollVertically(ui_->VScroll->value(), ui_->VScroll->maximum(), viewport());
    placeChart();
    ui_->focusEdge->resize(ui_->fmeGraph->size());
}

GraphZoom::Extent frmPestMGraph::viewport() const
{
    return {ui_->pic_0->width() * TwipsPerPixel, ui_->pic_0->height() * TwipsPerPixel};
}

void frmPestMGraph::placeChart()
{
    ui_->chGraph->setGeometry(pixels(zoom_.left()), pixels(zoom_.top()), pixels(zoom_.size().width), pixels(zoom_.size().height));
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
    zoom_.restart(viewport());
    placeChart();
    for (QPushButton *button : {ui_->cmd_2, ui_->cmd_3, ui_->cmd_5}) {
        button->setEnabled(true);
    }
}

void frmPestMGraph::Draw_Graph()
{
    try {
        const GraphCriteria wanted = criteria();
        if (wanted.SeriesCount == 0) {
            dialogs().message(QStringLiteral("No data to dispay"));
            return;
        }
        // Hidden before a box reports an error.
        const controls::BusyPointer busy;
        drawGraph(ui_->chGraph->model(), readGraphData(wanted, objPestMON(), session()), wanted, ui_->chk_0->isChecked(),
                  ui_->chk_1->isChecked());
    } catch (const basic::RunTimeError &error) {
        tellGraphError(dialogs(), error);
    }
}

void frmPestMGraph::chartTypeClick()
{
    const auto index = static_cast<std::size_t>(ui_->cbo_6->ListIndex());
    ui_->chGraph->model().setChartType(chartKinds().at(index).chartType);
}

void frmPestMGraph::zoomIn()
{
    zoom_.zoomIn(viewport());
    setScrollRanges();
    ui_->VScroll->setValue(ui_->VScroll->maximum());
    placeChart();
    if (zoom_.level() == 1) {
        ui_->cmd_3->setEnabled(true);
        showScrollBars(true);
    }
    if (zoom_.level() == GraphZoom::HighestLevel) {
        ui_->cmd_2->setEnabled(false);
    }
}

void frmPestMGraph::zoomOut()
{
    zoom_.zoomOut(viewport());
    setScrollRanges();
    placeChart();
    if (zoom_.level() == 0) {
        ui_->cmd_3->setEnabled(false);
        showScrollBars(false);
    }
    if (zoom_.level() < GraphZoom::HighestLevel) {
        ui_->cmd_2->setEnabled(true);
    }
}

void frmPestMGraph::setScrollRanges()
{
    ui_->HScroll->setMaximum(zoom_.horizontalMax());
    ui_->VScroll->setMaximum(zoom_.verticalMax());
    ui_->HScroll->setPageStep(viewport().width / GraphZoom::ScrollStep);
    ui_->VScroll->setPageStep(viewport().height / GraphZoom::ScrollStep);
}

void frmPestMGraph::showScrollBars(bool shown)
{
    ui_->VScroll->setVisible(shown);
    ui_->HScroll->setVisible(shown);
    ui_->pic_1->setVisible(shown);
}

void frmPestMGraph::pointSelected(int series, int point)
{
    chart::Chart &chGraph = ui_->chGraph->model();
    chGraph.setColumn(series);
    const bool slice = chGraph.series(series).SeriesType == chart::SeriesType::Pie2d;
    if (!slice) {
        chGraph.setRow(point);
    }
    const std::optional<double> value = slice ? chGraph.ChartData().columnSum(series) : chGraph.Data();
    QLabel &name = *ui_->lblPointVal_1;
    name.setToolTip(slice ? chGraph.ColumnLabel() : chGraph.RowLabel());
    name.setText(name.fontMetrics().elidedText(name.toolTip(), Qt::ElideRight, name.maximumWidth()));
    ui_->lblPointVal_2->setText(basic::doubleText(value.value_or(0.0)));
    PointPicked_ = true;
    showPoint({series, point});
}

void frmPestMGraph::showPoint(const chart::PointIndex &index)
{
    const std::optional<QPoint> position = ui_->chGraph->positionOf(index);
    if (!position || zoom_.level() < 1) {
        return;
    }
    const QPoint inViewport = ui_->chGraph->pos() + *position;
    const QRect seen = ui_->pic_0->rect();
    if (!seen.contains(inViewport)) {
        const QPoint way = inViewport - seen.center();
        const double step = static_cast<double>(GraphZoom::ScrollStep) / TwipsPerPixel;
        ui_->HScroll->setValue(ui_->HScroll->value() + static_cast<int>(way.x() / step));
        ui_->VScroll->setValue(ui_->VScroll->value() + static_cast<int>(way.y() / step));
    }
}

void frmPestMGraph::chartClick()
{
    if (!PointPicked_) {
        ui_->lblPointVal_1->clear();
        ui_->lblPointVal_1->setToolTip({});
        ui_->lblPointVal_2->clear();
    }
    PointPicked_ = false;
}

void frmPestMGraph::printGraph()
{
    // A failure is reported in the status line, without a box.
    try {
        const QString title = QStringLiteral("Pest:") + ui_->cmbBCount->Text();
        const auto printed = printChart(*ui_->chGraph, dialogs(), title, ui_->pic_0->size());
        if (printed) {
            host().showStatus(printed->isEmpty() ? QStringLiteral("The graph was handed to the printer")
                                                 : QStringLiteral("Graph saved as %1").arg(QDir::toNativeSeparators(*printed)));
        }
    } catch (const basic::RunTimeError &error) {
        host().showFailure(QStringLiteral("The graph was not printed: %1").arg(error.description()));
    }
}

void frmPestMGraph::setUpStyles()
{
    try {
        frmGraphEdit styles(ui_->chGraph->model(), dialogs(), this);
        styles.exec();
    } catch (const basic::RunTimeError &error) {
        tellGraphError(dialogs(), error);
    }
}
