// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/frmGraphEdit.h"

#include "graphs/ColourBox.h"
#include "graphs/GraphError.h"
#include "graphs/StyleChoices.h"
#include "graphs/modGrafiek.h"
#include "platform/chart/Chart.h"
#include "platform/controls/ItemCombo.h"
#include "screens/ShortcutsPage.h"
#include "ui_frmGraphEdit.h"

#include <QShortcut>
#include <QSignalBlocker>

using chart::ChartType;
using chart::ColourRole;

namespace
{

void fillCombo(controls::ItemCombo &combo, const QStringList &texts)
{
    combo.setTypingAllowed(false);
    for (const QString &text : texts) {
        combo.AddItem(text);
    }
}

QColor boxColour(const ColourBox &box)
{
    const std::int32_t colour = colourNumber(box.BackColor());
    return QColor(ColorComponent(colour, 1), ColorComponent(colour, 2), ColorComponent(colour, 3));
}

} // namespace

frmGraphEdit::frmGraphEdit(chart::Chart &chGraph, controls::Dialogs &dialogs, QWidget *parent)
    : QDialog(parent), chGraph_(chGraph), dialogs_(dialogs), ui_(std::make_unique<Ui::frmGraphEdit>())
{
    if (chGraph.SeriesCount() == 0) {
        throw basic::RunTimeError(basic::ErrorNumber::SubscriptOutOfRange,
                                  QStringLiteral("Subscript out of range: the chart has no series yet. Draw a graph first."));
    }
    ui_->setupUi(this);
    connectControls();
    Filling_ = true;
    fill();
    Filling_ = false;
}

frmGraphEdit::~frmGraphEdit() = default;

template <typename Body> bool frmGraphEdit::runOrReport(Body &&body)
{
    try {
        body();
        return true;
    } catch (const basic::RunTimeError &error) {
        showGraphError(dialogs_, error);
        return false;
    }
}

void frmGraphEdit::connectControls()
{
    // The page lists the keys of this dialog with those of its screen.
    connect(new QShortcut(Qt::Key_F1, this), &QShortcut::activated, this,
            [this] { ShortcutsPage::openOver(this, QStringLiteral("frmPestMGraph")); });
    connect(ui_->cmb_0, &controls::ItemCombo::Click, this, [this] {
        if (!runOrReport([this] { seriesClick(); })) {
            ui_->cmb_0->setText(ui_->cmb_0->List(LastSeries_));
        }
    });
    connect(ui_->cmbSymbolType, &controls::ItemCombo::Click, this, [this] { markerTypeClick(); });
    for (ColourBox *box : {ui_->picColor_0, ui_->picColor_1, ui_->picColor_2}) {
        connect(box, &ColourBox::clicked, this, [this, box] { chooseColour(*box); });
    }
    connect(ui_->cmdGSOK, &QPushButton::clicked, this, [this] { runOrReport([this] { okClick(); }); });
    connect(ui_->cmdGSCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmGraphEdit::fill()
{
    fillCombo(*ui_->cmbChartType, seriesTypeTexts(chGraph_.Chart3d()));
    const ChartType type = chGraph_.chartType();
    ui_->cmbChartType->setEnabled(type == ChartType::Combination3d || type == ChartType::Combination2d);
    fillCombo(*ui_->cmbLineStyle, lineStyleTexts());
    fillCombo(*ui_->cmbSymbolType, markerStyleTexts());
    QStringList names;
    for (int column = 1; column <= chGraph_.SeriesCount(); ++column) {
        names.append(QStringLiteral("%1 - %2").arg(QString::number(column), chGraph_.columnLabelAt(column)));
    }
    fillCombo(*ui_->cmb_0, names);
    ui_->cmb_0->setListIndex(0);
}

void frmGraphEdit::seriesClick()
{
    apply();
    showSeries(ui_->cmb_0->ListIndex() + 1);
    LastSeries_ = ui_->cmb_0->ListIndex();
}

void frmGraphEdit::showSeries(int column)
{
    const chart::Series &series = chGraph_.series(column);
    const int type = seriesTypeIndex(series.SeriesType, chGraph_.Chart3d());
    if (type >= 0) {
        ui_->cmbChartType->setListIndex(type);
    }
    ui_->cmbLineStyle->setListIndex(static_cast<int>(series.Pen.Style));
    ui_->picColor_0->setBackColor(chGraph_.seriesColour(column, ColourRole::Pen));
    ui_->txtLW->setText(QString::number(series.Pen.Width));
    ui_->cmbSymbolType->setListIndex(static_cast<int>(series.Marker.Style));
    ui_->picColor_1->setBackColor(chGraph_.seriesColour(column, ColourRole::MarkerPen));
    ui_->txtSS->setText(QString::number(series.Marker.Size));
    ui_->txtMLW->setText(QString::number(series.Marker.PenWidth));
    ui_->picColor_2->setBackColor(chGraph_.seriesColour(column, ColourRole::MarkerFill));
}

void frmGraphEdit::apply()
{
    if (Filling_) {
        return;
    }
    try {
        writeTo(LastSeries_ + 1);
    } catch (const basic::RunTimeError &) {
        chGraph_.Refresh();
        throw;
    }
    chGraph_.Refresh();
}

void frmGraphEdit::writeTo(int column)
{
    chart::Series &series = chGraph_.series(column);
    if (const auto type = seriesTypeAt(ui_->cmbChartType->ListIndex(), chGraph_.Chart3d())) {
        series.SeriesType = *type;
    }
    series.Pen.Style = static_cast<chart::PenStyle>(ui_->cmbLineStyle->ListIndex());
    chGraph_.setSeriesColour(column, ColourRole::Pen, boxColour(*ui_->picColor_0));
    chGraph_.setSeriesColour(column, ColourRole::Brush, boxColour(*ui_->picColor_0));
    series.Pen.Width = twipsFromText(ui_->txtLW->text());
    series.Marker.Style = static_cast<chart::MarkerStyle>(ui_->cmbSymbolType->ListIndex());
    chGraph_.setSeriesColour(column, ColourRole::MarkerPen, boxColour(*ui_->picColor_1));
    series.Marker.Size = twipsFromText(ui_->txtSS->text());
    series.Marker.PenWidth = twipsFromText(ui_->txtMLW->text());
    chGraph_.setSeriesColour(column, ColourRole::MarkerFill, boxColour(*ui_->picColor_2));
}

void frmGraphEdit::markerTypeClick()
{
    const bool offered = markerShowsFillColour(ui_->cmbSymbolType->ListIndex());
    ui_->lbl_8->setVisible(offered);
    ui_->picColor_2->setVisible(offered);
    if (offered) {
        ui_->picColor_2->setBackColor(ui_->picColor_1->BackColor());
    }
}

void frmGraphEdit::chooseColour(ColourBox &box)
{
    if (const std::optional<QColor> colour = dialogs_.chooseColour(box.BackColor(), QStringLiteral("Colour"))) {
        box.setBackColor(*colour);
    }
}

void frmGraphEdit::okClick()
{
    LastSeries_ = ui_->cmb_0->ListIndex();
    apply();
    accept();
}
