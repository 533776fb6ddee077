// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "graphs/GraphSeries.h"
#include "graphs/GraphZoom.h"
#include "platform/chart/Chart.h"
#include "screens/ScreenHost.h"

#include <QObject>

namespace Ui
{
class frmPestMGraph;
}
class ChildScreen;

/// The chart half of the graph screen: chart type, markers, labels, zoom, read-out, styles and print.
class GraphPane : public QObject
{
    Q_OBJECT
public:
    /// All three must outlive the pane.
    GraphPane(Ui::frmPestMGraph &ui, ChildScreen &screen, ScreenHost &host);

    /// Fits the chart into its viewport at zoom level 0, with the buttons as on an activation of the screen.
    void activate();
    void draw(const chart::DataTable &GraphData, const GraphCriteria &criteria);
    /// After a draw that was asked for, successful or not.
    void fitAfterDraw();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void connectButtons();
    void connectChart();
    void chartTypeClick();
    /// Markers are on for lines by "Date" until the user has decided.
    void offerMarkers();
    void zoomIn();
    void zoomOut();
    void placeChart();
    /// Puts the read-out below the options where both do not fit into one row.
    void arrangeStrip();
    /// After the layout has resized the viewport.
    void refitChart();
    void showScrollBars(bool shown);
    void setScrollRanges();
    GraphZoom::Extent viewport() const;
    void pointSelected(int series, int point);
    /// Scrolls to a point selected by key on a zoomed chart.
    void showPoint(const chart::PointIndex &index);
    void chartClick();
    void clearReadOut();
    void printGraph();
    /// Farm, scope, block or pest, period and print date, for the foot of the printed page.
    QString footLine() const;
    void setUpStyles();

    Ui::frmPestMGraph &ui_;
    ChildScreen &screen_;
    ScreenHost &host_;
    GraphZoom zoom_;
    GraphCriteria drawn_;
    bool PointPicked_ = false;
    bool markersChosen_ = false;
};
