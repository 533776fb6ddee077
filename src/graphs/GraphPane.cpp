// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/GraphPane.h"

#include "graphs/GraphDrawing.h"
#include "graphs/GraphError.h"
#include "graphs/GraphPrint.h"
#include "graphs/frmGraphEdit.h"
#include "platform/basic/Clock.h"
#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "platform/controls/Dialogs.h"
#include "screens/ChildScreen.h"
#include "ui_frmPestMGraph.h"

#include <QDir>
#include <QEvent>

#include <cmath>

namespace
{

using chart::TwipsPerPixel;

int pixels(std::int32_t twips)
{
    return static_cast<int>(std::lround(static_cast<double>(twips) / TwipsPerPixel));
}

} // namespace

GraphPane::GraphPane(Ui::frmPestMGraph &ui, ChildScreen &screen, ScreenHost &host) : ui_(ui), screen_(screen), host_(host)
{
    connectButtons();
    connectChart();
    showScrollBars(false);
    ui_.pic_0->installEventFilter(this);
    ui_.chGraph->installEventFilter(this);
    ui_.chGraph->setEmptyText(QStringLiteral("Choose what to compare, then press Draw Graph."));
}

void GraphPane::connectButtons()
{
    screen_.on(ui_.cbo_6, &controls::ItemCombo::Click, this, [this] { chartTypeClick(); });
    connect(ui_.chk_0, &QCheckBox::clicked, this, [this](bool show) {
        markersChosen_ = true;
        showGraphMarkers(ui_.chGraph->model(), show);
    });
    for (QRadioButton *axis : {ui_.OptW_0, ui_.OptW_1, ui_.OptW_2}) {
        connect(axis, &QRadioButton::clicked, this, [this] { offerMarkers(); });
    }
    connect(ui_.chk_1, &QCheckBox::clicked, this, [this](bool show) { showGraphLabels(ui_.chGraph->model(), show); });
    screen_.on(ui_.cmd_2, &QPushButton::clicked, this, [this] { zoomIn(); });
    screen_.on(ui_.cmd_3, &QPushButton::clicked, this, [this] { zoomOut(); });
    connect(ui_.cmd_4, &QPushButton::clicked, this, [this] { printGraph(); });
    connect(ui_.cmd_5, &QPushButton::clicked, this, [this] { setUpStyles(); });
    connect(ui_.cmd_1, &QPushButton::clicked, this, [this] { screen_.closeScreen(); });
}

void GraphPane::connectChart()
{
    connect(ui_.HScroll, &QScrollBar::valueChanged, this, [this](int value) {
        zoom_.scrollHorizontally(value);
        placeChart();
    });
    connect(ui_.VScroll, &QScrollBar::valueChanged, this, [this](int value) {
        zoom_.scrollVertically(value, ui_.VScroll->maximum(), viewport());
        placeChart();
    });
    // Not around the chart itself, which may be far larger than its visible part.
    ui_.focusEdge->setAttribute(Qt::WA_TransparentForMouseEvents);
    ui_.focusEdge->raise();
    ui_.focusEdge->hide();
    screen_.on(ui_.chGraph, &chart::ChartView::PointSelected, this,
               [this](int series, int point) { pointSelected(series, point); });
    connect(ui_.chGraph, &chart::ChartView::Click, this, [this] { chartClick(); });
    connect(ui_.chGraph, &chart::ChartView::TableCopied, this,
            [this] { host_.showStatus(QStringLiteral("The table of the graph was copied")); });
}

void GraphPane::activate()
{
    if (zoom_.level() > 0) {
        ui_.cmd_3->setEnabled(false);
    }
    ui_.cmd_2->setEnabled(true);
    zoom_.restart(viewport());
    setScrollRanges();
    placeChart();
    showScrollBars(false);
}

void GraphPane::draw(const chart::DataTable &GraphData, const GraphCriteria &criteria)
{
    drawn_ = criteria;
    clearReadOut();
    drawGraph(ui_.chGraph->model(), GraphData, criteria, ui_.chk_0->isChecked(), ui_.chk_1->isChecked());
}

void GraphPane::fitAfterDraw()
{
    zoom_.restart(viewport());
    placeChart();
    for (QPushButton *button : {ui_.cmd_2, ui_.cmd_3, ui_.cmd_5}) {
        button->setEnabled(true);
    }
}

bool GraphPane::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == ui_.pic_0 && event->type() == QEvent::Resize) {
        arrangeStrip();
        refitChart();
    }
    if (watched == ui_.chGraph && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
        ui_.focusEdge->setVisible(event->type() == QEvent::FocusIn);
    }
    return QObject::eventFilter(watched, event);
}

void GraphPane::arrangeStrip()
{
    constexpr int wideSpacing = 16;
    constexpr int narrowSpacing = 8;
    constexpr int wideEdge = 12;
    constexpr int narrowEdge = 6;
    const bool isNarrow = ui_.stripLayout->direction() == QBoxLayout::TopToBottom;
    const int options = ui_.fmeDisplay_4->minimumSizeHint().width()
        + (isNarrow ? (ui_.optionsLayout->count() - 1) * (wideSpacing - narrowSpacing) : 0);
    const int readOut = ui_.fmeDisplay_2->minimumSizeHint().width();
    const QMargins margins = ui_.stripLayout->contentsMargins();
    const bool narrow = ui_.fmeGraph->width() < options + readOut + 3 * wideSpacing + margins.left() + margins.right();
    if (narrow != isNarrow) {
        ui_.stripLayout->setDirection(narrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
        ui_.stripLayout->setSpacing(narrow ? narrowSpacing / 2 : wideSpacing);
        const int edge = narrow ? narrowEdge : wideEdge;
        ui_.stripLayout->setContentsMargins(margins.left(), edge, margins.right(), edge);
        ui_.optionsLayout->setSpacing(narrow ? narrowSpacing : wideSpacing);
        ui_.stripLayout->setAlignment(ui_.fmeDisplay_2, narrow ? Qt::AlignLeft : Qt::Alignment());
        ui_.readOutRule->setVisible(!narrow);
    }
}

void GraphPane::refitChart()
{
    const int belowViewport = ui_.VScroll->maximum() - ui_.VScroll->value();
    zoom_.refit(viewport());
    setScrollRanges();
    ui_.VScroll->setValue(ui_.VScroll->maximum() - belowViewport);
    zoom_.scrollHorizontally(ui_.HScroll->value());
    zoom_.scrollVertically(ui_.VScroll->value(), ui_.VScroll->maximum(), viewport());
    placeChart();
    ui_.focusEdge->resize(ui_.fmeGraph->size());
}

GraphZoom::Extent GraphPane::viewport() const
{
    return {ui_.pic_0->width() * TwipsPerPixel, ui_.pic_0->height() * TwipsPerPixel};
}

void GraphPane::placeChart()
{
    ui_.chGraph->setGeometry(pixels(zoom_.left()), pixels(zoom_.top()), pixels(zoom_.size().width), pixels(zoom_.size().height));
}

void GraphPane::chartTypeClick()
{
    const auto index = static_cast<std::size_t>(ui_.cbo_6->ListIndex());
    ui_.chGraph->model().setChartType(chartKinds().at(index).chartType);
    offerMarkers();
}

void GraphPane::offerMarkers()
{
    const chart::ChartType type = ui_.chGraph->model().chartType();
    const bool line = type == chart::ChartType::Line2d || type == chart::ChartType::Line3d || type == chart::ChartType::XY2d;
    // A day between two days without a finding has no line, so only a marker shows it well.
    const bool wanted = line && ui_.OptW_1->isChecked();
    if (!markersChosen_ && wanted != ui_.chk_0->isChecked()) {
        ui_.chk_0->setChecked(wanted);
        showGraphMarkers(ui_.chGraph->model(), wanted);
    }
}

void GraphPane::zoomIn()
{
    zoom_.zoomIn(viewport());
    setScrollRanges();
    ui_.VScroll->setValue(ui_.VScroll->maximum());
    placeChart();
    if (zoom_.level() == 1) {
        ui_.cmd_3->setEnabled(true);
        showScrollBars(true);
    }
    if (zoom_.level() == GraphZoom::HighestLevel) {
        ui_.cmd_2->setEnabled(false);
    }
}

void GraphPane::zoomOut()
{
    zoom_.zoomOut(viewport());
    setScrollRanges();
    placeChart();
    if (zoom_.level() == 0) {
        ui_.cmd_3->setEnabled(false);
        showScrollBars(false);
    }
    if (zoom_.level() < GraphZoom::HighestLevel) {
        ui_.cmd_2->setEnabled(true);
    }
}

void GraphPane::setScrollRanges()
{
    ui_.HScroll->setMaximum(zoom_.horizontalMax());
    ui_.VScroll->setMaximum(zoom_.verticalMax());
    ui_.HScroll->setPageStep(viewport().width / GraphZoom::ScrollStep);
    ui_.VScroll->setPageStep(viewport().height / GraphZoom::ScrollStep);
}

void GraphPane::showScrollBars(bool shown)
{
    ui_.VScroll->setVisible(shown);
    ui_.HScroll->setVisible(shown);
    ui_.pic_1->setVisible(shown);
}

void GraphPane::pointSelected(int series, int point)
{
    chart::Chart &chGraph = ui_.chGraph->model();
    chGraph.setColumn(series);
    const bool slice = chGraph.series(series).SeriesType == chart::SeriesType::Pie2d;
    if (!slice) {
        chGraph.setRow(point);
    }
    const std::optional<double> value = slice ? chGraph.ChartData().columnSum(series) : chGraph.Data();
    QLabel &name = *ui_.lblPointVal_1;
    name.setToolTip(slice ? chGraph.ColumnLabel() : chGraph.RowLabel());
    name.setText(name.fontMetrics().elidedText(name.toolTip(), Qt::ElideRight, name.maximumWidth()));
    ui_.lblPointVal_2->setText(basic::doubleText(value.value_or(0.0)));
    host_.showStatus(ui_.chGraph->pointText({series, point}));
    PointPicked_ = true;
    showPoint({series, point});
}

void GraphPane::showPoint(const chart::PointIndex &index)
{
    const std::optional<QPoint> position = ui_.chGraph->positionOf(index);
    if (!position || zoom_.level() < 1) {
        return;
    }
    const QPoint inViewport = ui_.chGraph->pos() + *position;
    // What the axes around the visible part leave free.
    constexpr int sides = 80;
    constexpr int head = 40;
    constexpr int foot = 60;
    const QRect seen = ui_.pic_0->rect().adjusted(sides, head, -sides, -foot);
    if (!seen.contains(inViewport)) {
        const QPoint distance = inViewport - seen.center();
        const double step = static_cast<double>(GraphZoom::ScrollStep) / TwipsPerPixel;
        ui_.HScroll->setValue(ui_.HScroll->value() + static_cast<int>(distance.x() / step));
        ui_.VScroll->setValue(ui_.VScroll->value() + static_cast<int>(distance.y() / step));
    }
}

void GraphPane::chartClick()
{
    if (!PointPicked_) {
        clearReadOut();
    }
    PointPicked_ = false;
}

void GraphPane::clearReadOut()
{
    if (!ui_.lblPointVal_1->toolTip().isEmpty()) {
        host_.showStatus(QString());
    }
    ui_.lblPointVal_1->clear();
    ui_.lblPointVal_1->setToolTip({});
    ui_.lblPointVal_2->clear();
}

void GraphPane::printGraph()
{
    // A failure is reported in the status line, without a box.
    try {
        const QString title = QStringLiteral("Pest:") + ui_.cmbBCount->Text();
        const auto printed = printChart(*ui_.chGraph, host_.dialogs(), {title, footLine()}, ui_.pic_0->size());
        if (printed) {
            host_.showStatus(printed->isEmpty() ? QStringLiteral("The graph was sent to the printer")
                                                : QStringLiteral("Graph saved as %1").arg(QDir::toNativeSeparators(*printed)));
        }
    } catch (const basic::RunTimeError &error) {
        host_.showFailure(QStringLiteral("The graph was not printed: %1").arg(error.description()));
    }
}

QString GraphPane::footLine() const
{
    const QString item = ui_.cmbBCount->Text();
    const QString scope = drawn_.scope == GraphScope::PerBlock ? QStringLiteral("Block: ") + item
        : drawn_.scope == GraphScope::PerPest                  ? QStringLiteral("Pest: ") + item
                                                               : QStringLiteral("Whole farm");
    const auto day = [](QDate date) { return basic::formatDate(date, u"yyyy/mm/dd"); };
    return QStringLiteral("Farm: %1    %2    Period: %3 to %4    Printed: %5")
        .arg(host_.session().CurrentFarm, scope, day(drawn_.from), day(drawn_.to), day(basic::Clock::today()));
}

void GraphPane::setUpStyles()
{
    try {
        frmGraphEdit styles(ui_.chGraph->model(), host_.dialogs(), &screen_);
        styles.exec();
    } catch (const basic::RunTimeError &error) {
        showGraphError(host_.dialogs(), error);
    }
}
