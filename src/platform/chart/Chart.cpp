// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/Chart.h"

#include "platform/basic/RunTimeError.h"
#include "platform/chart/ValueScale.h"

#include <algorithm>

namespace chart
{

namespace
{

struct TypePair {
    ChartType chart;
    SeriesType series;
};
constexpr TypePair TypePairs[] = {
    {ChartType::Bar3d, SeriesType::Bar3d},         {ChartType::Bar2d, SeriesType::Bar2d},
    {ChartType::Line3d, SeriesType::Line3d},       {ChartType::Line2d, SeriesType::Line2d},
    {ChartType::Area3d, SeriesType::Area3d},       {ChartType::Area2d, SeriesType::Area2d},
    {ChartType::Step3d, SeriesType::Step3d},       {ChartType::Step2d, SeriesType::Step2d},
    {ChartType::Combination3d, SeriesType::Bar3d}, {ChartType::Combination2d, SeriesType::Bar2d},
    {ChartType::Pie2d, SeriesType::Pie2d},         {ChartType::XY2d, SeriesType::XY2d},
};

/// Markers and pens that differ from series to series, since on a grey print the five colours look alike.
struct SeriesForm {
    MarkerStyle marker;
    PenStyle pen;
};
constexpr SeriesForm SeriesForms[PlotColours::SeriesColours] = {
    {MarkerStyle::FilledCircle, PenStyle::Solid},        {MarkerStyle::FilledSquare, PenStyle::Dashed},
    {MarkerStyle::FilledDiamond, PenStyle::DashDot},     {MarkerStyle::FilledTriangle, PenStyle::Dotted},
    {MarkerStyle::FilledDownTriangle, PenStyle::Ditted},
};

SeriesType seriesTypeOf(ChartType type)
{
    const auto *found =
        std::find_if(std::begin(TypePairs), std::end(TypePairs), [type](const TypePair &pair) { return pair.chart == type; });
    return found == std::end(TypePairs) ? SeriesType::Bar2d : found->series;
}

int inRange(int number, int count)
{
    if (number < 1 || number > count) {
        throw basic::RunTimeError(basic::ErrorNumber::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
    }
    return number;
}

int asCount(int count, int most)
{
    if (count < 0 || count > most) {
        throw basic::RunTimeError(basic::ErrorNumber::InvalidArgument, QStringLiteral("Invalid procedure call or argument"));
    }
    return count;
}

/// The list is as long as the last label that was set; labels beyond it are empty.
void setLabel(QStringList &labels, int number, const QString &label)
{
    while (labels.size() < number) {
        labels.append(QString());
    }
    labels[number - 1] = label;
}

std::size_t indexOf(AxisId axis)
{
    return static_cast<std::size_t>(inRange(static_cast<int>(axis) + 1, 4) - 1);
}

} // namespace

Chart::Chart(QObject *parent) : QObject(parent) {}

void Chart::setChartType(ChartType type)
{
    chartType_ = type;
    for (Series &each : series_) {
        each.SeriesType = seriesTypeOf(type);
    }
    Refresh();
}

bool Chart::Chart3d() const
{
    return chartType_ <= ChartType::Combination3d && static_cast<int>(chartType_) % 2 == 0;
}

void Chart::setRowCount(int count)
{
    table_.resize(count, table_.columns());
    takeCounts();
}

void Chart::setColumnCount(int count)
{
    table_.resize(table_.rows(), asCount(count, MaxColumns));
    takeCounts();
}

void Chart::takeCounts()
{
    rowLabels_ = rowLabels_.mid(0, RowCount());
    columnLabels_ = columnLabels_.mid(0, ColumnCount());
    row_ = std::clamp(row_, 1, std::max(1, RowCount()));
    column_ = std::clamp(column_, 1, std::max(1, ColumnCount()));
    const int known = SeriesCount();
    series_.resize(static_cast<std::size_t>(ColumnCount()));
    for (int column = known + 1; column <= ColumnCount(); ++column) {
        Series &added = series_[static_cast<std::size_t>(column - 1)];
        added = defaultSeries(column);
        added.SeriesType = seriesTypeOf(chartType_);
    }
    Refresh();
}

Series Chart::defaultSeries(int column)
{
    const SeriesForm &form = SeriesForms[(column - 1) % PlotColours::SeriesColours];
    Series fresh;
    fresh.Marker.Style = form.marker;
    fresh.Pen.Style = form.pen;
    return fresh;
}

void Chart::setColumnLabelCount(int count)
{
    columnLabelCount_ = asCount(count, MaxColumns);
    columnLabels_ = columnLabels_.mid(0, count);
    Refresh();
}

void Chart::setRow(int row)
{
    row_ = inRange(row, RowCount());
}

void Chart::setColumn(int column)
{
    column_ = inRange(column, ColumnCount());
}

QString Chart::RowLabel() const
{
    return rowLabelAt(row_);
}

void Chart::setRowLabel(const QString &label)
{
    setLabel(rowLabels_, inRange(row_, RowCount()), label);
    Refresh();
}

QString Chart::ColumnLabel() const
{
    return columnLabelAt(column_);
}

void Chart::setColumnLabel(const QString &label)
{
    setLabel(columnLabels_, inRange(column_, ColumnCount()), label);
    Refresh();
}

QString Chart::rowLabelAt(int row) const
{
    return rowLabels_.value(inRange(row, RowCount()) - 1);
}

QString Chart::columnLabelAt(int column) const
{
    return columnLabels_.value(inRange(column, ColumnCount()) - 1);
}

void Chart::setData(std::optional<double> value)
{
    table_.setValue(row_, column_, value);
    Refresh();
}

void Chart::setChartData(const DataTable &table)
{
    asCount(table.columns(), MaxColumns);
    table_ = table;
    rowLabels_.clear();
    columnLabels_.clear();
    columnLabelCount_ = 0;
    rowNoun_.clear();
    unitRows_.clear();
    takeCounts();
}

QString Chart::tableText() const
{
    QStringList cells{AxisTitle(AxisId::X)};
    for (int column = 1; column <= ColumnCount(); ++column) {
        cells.append(columnLabelAt(column));
    }
    QString text = cells.join(u'\t') + u'\n';
    for (int row = 1; row <= RowCount(); ++row) {
        cells = {rowLabelAt(row)};
        for (int column = 1; column <= ColumnCount(); ++column) {
            const std::optional<double> value = table_.value(row, column);
            cells.append(value ? valueText(*value) : QString());
        }
        text += cells.join(u'\t') + u'\n';
    }
    return text;
}

Series &Chart::series(int column)
{
    return series_[static_cast<std::size_t>(inRange(column, SeriesCount()) - 1)];
}

const Series &Chart::series(int column) const
{
    return series_[static_cast<std::size_t>(inRange(column, SeriesCount()) - 1)];
}

void Chart::resetSeries(int column)
{
    Series &old = series(column);
    const SeriesType type = old.SeriesType;
    old = defaultSeries(column);
    old.SeriesType = type;
    Refresh();
}

QColor Chart::seriesColour(int column, ColourRole role, const PlotColours &plotColours) const
{
    const auto &own = series(column).ownColours;
    const auto found = own.find(role);
    return found != own.end() ? found->second
                              : plotColours.series[static_cast<std::size_t>(column - 1) % PlotColours::SeriesColours];
}

void Chart::setSeriesColour(int column, ColourRole role, const QColor &colour)
{
    auto &own = series(column).ownColours;
    own.erase(role);
    if (seriesColour(column, role) != colour) {
        own[role] = colour;
    }
    Refresh();
}

QString Chart::AxisTitle(AxisId axis) const
{
    return axes_[indexOf(axis)].title;
}

bool Chart::AxisTitleVisible(AxisId axis) const
{
    return axes_[indexOf(axis)].titleVisible;
}

void Chart::setAxisTitle(AxisId axis, const QString &title)
{
    axes_[indexOf(axis)].title = title;
    Refresh();
}

void Chart::setAxisTitleVisible(AxisId axis, bool visible)
{
    axes_[indexOf(axis)].titleVisible = visible;
    Refresh();
}

void Chart::setTitleText(const QString &title)
{
    title_ = title;
    Refresh();
}

void Chart::setShowLegend(bool show)
{
    showLegend_ = show;
    Refresh();
}

void Chart::setAllowSelections(bool allow)
{
    allowSelections_ = allow;
    Refresh();
}

void Chart::setPlotColours(const PlotColours &plotColours)
{
    plotColours_ = plotColours;
    Refresh();
}

void Chart::setRepaint(bool repaint)
{
    repaint_ = repaint;
    Refresh();
}

void Chart::Refresh()
{
    if (repaint_) {
        Q_EMIT changed();
    }
}

} // namespace chart
