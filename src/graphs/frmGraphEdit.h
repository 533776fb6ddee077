// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/ChartConstants.h"

#include <QDialog>

#include <memory>

namespace Ui
{
class frmGraphEdit;
}
namespace chart
{
class Chart;
}
namespace controls
{
class Dialogs;
}
class ColourBox;

/// Edits the style of each series of a chart while it is shown. What was applied on changing the series stays when
/// the dialog is cancelled.
class frmGraphEdit : public QDialog
{
    Q_OBJECT
public:
    /// Error 9 for a chart without series.
    frmGraphEdit(chart::Chart &chGraph, controls::Dialogs &dialogs, QWidget *parent = nullptr);
    ~frmGraphEdit() override;

private:
    void connectControls();
    void fill();
    void seriesClick();
    void showSeries(int column);
    /// Applies the boxes to their series. Boxes before an invalid one are applied.
    void apply();
    void writeTo(int column);
    void markerTypeClick();
    void chooseColour(ColourBox &box);
    void okClick();
    /// Runs `body`; an error becomes a message with number and description, and the dialog stays.
    template <typename Body> bool runOrReport(Body &&body);

    chart::Chart &chGraph_;
    controls::Dialogs &dialogs_;
    std::unique_ptr<Ui::frmGraphEdit> ui_;
    int LastSeries_ = 0; // from 0
    bool Filling_ = false;
};
