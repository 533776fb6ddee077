// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "graphs/GraphLists.h"
#include "graphs/GraphSeries.h"
#include "screens/ChildScreen.h"

#include <array>
#include <memory>

namespace Ui
{
class frmPestMGraph;
}
class GraphPane;
class QLabel;

/// Charts the pest counts of completed monitoring: up to five pests or blocks by week, date or point.
///
/// The criteria depend on each other from top to bottom: scope, period, block or pest, order, series. A draw reads the numbers
/// and sets them on the chart; type, markers, labels, zoom and styles then change the chart alone.
class frmPestMGraph : public ChildScreen
{
    Q_OBJECT
public:
    explicit frmPestMGraph(ScreenHost &host, QWidget *parent = nullptr);
    ~frmPestMGraph() override;

    void activateScreen() override;
    QString screenTitle() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeRank(bool nextToDraw);
    void setUpLists();
    void setUpButtons();
    void connectCriteria();
    GraphScope scope() const;
    GraphListPeriod period() const;
    void scopeClick(GraphScope scope);
    void fixedItemClick();
    void measureClick();
    void rankClick(bool smallest);
    void periodLeft();
    /// Shows the five lists with "Pest 1" or "Block 1" and so on, selects in them and offers the order.
    void offerSeries(const QString &caption);
    void hideSeries();
    void offerPoints(bool offered);
    GraphCriteria criteria() const;

    void drawClick();
    void Draw_Graph();
    /// With the progress picture from one second on.
    chart::DataTable readWithProgress(const GraphCriteria &wanted);

    std::unique_ptr<Ui::frmPestMGraph> ui_;
    std::array<controls::ItemCombo *, GraphCriteria::MaxSeries> cbo_{};
    std::array<QLabel *, GraphCriteria::MaxSeries> captions_{};
    std::unique_ptr<GraphPane> pane_;
};
