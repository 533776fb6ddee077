// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/ChartConstants.h"
#include "platform/chart/DataTable.h"
#include "platform/chart/PlotColours.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QStringList>

#include <array>
#include <map>
#include <vector>

namespace chart
{

/// A point of a series, both counted from 1.
struct PointIndex {
    int series = 0;
    int point = 0;
    friend bool operator==(const PointIndex &, const PointIndex &) = default;
};

/// Widths and sizes are in twips, TwipsPerPixel to a logical pixel.
struct Pen {
    PenStyle Style = PenStyle::Solid;
    int Width = 20;
};

struct Marker {
    MarkerStyle Style = MarkerStyle::FilledCircle;
    int Size = 100;
    int PenWidth = 20;
};

struct DataPointLabel {
    LabelLocation LocationType = LabelLocation::None;
};

struct SeriesMarker {
    bool Auto = true;
    bool Show = false;
};

/// One column of the table. Marker and label are those of every point of it; colours are looked up in the chart.
struct Series {
    chart::SeriesType SeriesType = chart::SeriesType::Bar2d;
    chart::Pen Pen;
    chart::SeriesMarker SeriesMarker;
    chart::Marker Marker;
    chart::DataPointLabel DataPointLabel;
    std::map<ColourRole, QColor> ownColours;
};

/// A chart without a widget: table, labels, style of each series, axes. Rows are points and columns are series, both counted
/// from 1.
///
/// Setters of the chart emit changed(); after a change through series() call Refresh(). Rows, columns and axes out of
/// range raise error 9.
class Chart : public QObject
{
    Q_OBJECT
public:
    /// More columns raise error 5, as does a negative count.
    static constexpr int MaxColumns = 5;

    explicit Chart(QObject *parent = nullptr);

    ChartType chartType() const { return chartType_; }
    /// Gives every series the type of the same name; a combination begins as bars.
    void setChartType(ChartType type);
    bool Chart3d() const;

    int RowCount() const { return table_.rows(); }
    int ColumnCount() const { return table_.columns(); }
    /// Added rows and columns are empty, surplus ones are dropped. A new column has the default style.
    void setRowCount(int count);
    void setColumnCount(int count);
    int ColumnLabelCount() const { return columnLabelCount_; }
    void setColumnLabelCount(int count);

    int Row() const { return row_; }
    int Column() const { return column_; }
    void setRow(int row);
    void setColumn(int column);
    /// Of the current row or column, empty unless set.
    QString RowLabel() const;
    void setRowLabel(const QString &label);
    QString ColumnLabel() const;
    void setColumnLabel(const QString &label);
    QString rowLabelAt(int row) const;
    QString columnLabelAt(int column) const;
    /// Value at the current row and column.
    std::optional<double> Data() const { return table_.value(row_, column_); }
    void setData(std::optional<double> value);
    /// Replaces the whole table with its counts; the column label count becomes 0 and all labels become empty.
    void setChartData(const DataTable &table);
    const DataTable &ChartData() const { return table_; }
    /// The noun before a row label in point texts, such as "week"; empty for none. setChartData() clears it, as the next.
    const QString &rowNoun() const { return rowNoun_; }
    void setRowNoun(const QString &noun) { rowNoun_ = noun; }
    /// Rows, counted from 1, that begin a unit such as a month: a grid line each, and labels where not every row has space for
    /// one.
    const std::vector<int> &unitRows() const { return unitRows_; }
    void setUnitRows(std::vector<int> rows) { unitRows_ = std::move(rows); }
    /// The table with its labels as tab-separated lines, values as valueText(); empty cells stay empty.
    QString tableText() const;

    /// The style of a column; call Refresh() after a change.
    Series &series(int column);
    const Series &series(int column) const;
    const std::vector<Series> &allSeries() const { return series_; }
    int SeriesCount() const { return static_cast<int>(series_.size()); }
    /// Restores pen, marker, labels, styles and colours of a new chart; the series types stay.
    void resetSeries(int column);
    /// The colour of a part of a series, its own or that of the plot colours.
    QColor seriesColour(int column, ColourRole role, const PlotColours &plotColours) const;
    QColor seriesColour(int column, ColourRole role) const { return seriesColour(column, role, plotColours_); }
    /// A colour equal to the default is not stored, so that it still follows light, dark and paper.
    void setSeriesColour(int column, ColourRole role, const QColor &colour);

    QString AxisTitle(AxisId axis) const;
    bool AxisTitleVisible(AxisId axis) const;
    void setAxisTitle(AxisId axis, const QString &title);
    void setAxisTitleVisible(AxisId axis, bool visible);
    QString TitleText() const { return title_; }
    void setTitleText(const QString &title);
    bool ShowLegend() const { return showLegend_; }
    void setShowLegend(bool show);
    bool AllowSelections() const { return allowSelections_; }
    void setAllowSelections(bool allow);

    const PlotColours &plotColours() const { return plotColours_; }
    void setPlotColours(const PlotColours &plotColours);

    /// While false changed() is held back; a pending one is emitted when it becomes true.
    void setRepaint(bool repaint);
    void Refresh();

Q_SIGNALS:
    void changed();

private:
    struct Axis {
        QString title;
        bool titleVisible = false;
    };

    static Series defaultSeries(int column);
    /// Adapts labels, styles and the current row and column to the size of the table.
    void takeCounts();

    ChartType chartType_ = ChartType::Bar2d;
    DataTable table_;
    QStringList rowLabels_;
    QStringList columnLabels_;
    int columnLabelCount_ = 0;
    QString rowNoun_;
    std::vector<int> unitRows_;
    int row_ = 1;
    int column_ = 1;
    std::vector<Series> series_;
    std::array<Axis, 4> axes_;
    QString title_;
    bool showLegend_ = false;
    bool allowSelections_ = false;
    bool repaint_ = true;
    PlotColours plotColours_ = PlotColours::light();
};

} // namespace chart
