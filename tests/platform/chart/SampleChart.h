// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/Chart.h"

#include <vector>

/// A number for each point, nothing where the cell was never touched.
using Column = std::vector<std::optional<double>>;

/// Takes the columns over as series "S1", "S2" and so on, with rows named by their number.
inline void fillChart(chart::Chart &model, chart::ChartType type, const std::vector<Column> &columns)
{
    const int rows = columns.empty() ? 0 : static_cast<int>(columns.front().size());
    chart::DataTable table(rows, static_cast<int>(columns.size()));
    for (int row = 1; row <= rows; ++row) {
        for (int column = 1; column <= table.columns(); ++column) {
            table.setValue(row, column, columns[static_cast<std::size_t>(column - 1)][static_cast<std::size_t>(row - 1)]);
        }
    }
    model.setChartType(type);
    model.setChartData(table);
    for (int column = 1; column <= table.columns(); ++column) {
        model.setColumn(column);
        model.setColumnLabel(QStringLiteral("S%1").arg(column));
        model.series(column).SeriesMarker.Auto = false;
    }
    for (int row = 1; row <= rows; ++row) {
        model.setRow(row);
        model.setRowLabel(QString::number(row));
    }
    model.setShowLegend(true);
    model.setAllowSelections(true);
}

inline Column wave(int rows, int shift)
{
    Column column;
    for (int row = 0; row < rows; ++row) {
        column.push_back((row * 7 + shift * 5) % 23);
    }
    return column;
}

struct NamedType {
    const char *name;
    chart::ChartType type;
};
inline constexpr NamedType ChartTypes[] = {
    {"3dBar", chart::ChartType::Bar3d},
    {"2dBar", chart::ChartType::Bar2d},
    {"3dLine", chart::ChartType::Line3d},
    {"2dLine", chart::ChartType::Line2d},
    {"3dArea", chart::ChartType::Area3d},
    {"2dArea", chart::ChartType::Area2d},
    {"3dStep", chart::ChartType::Step3d},
    {"2dStep", chart::ChartType::Step2d},
    {"3dCombination", chart::ChartType::Combination3d},
    {"2dCombination", chart::ChartType::Combination2d},
    {"2dPie", chart::ChartType::Pie2d},
    {"2dXY", chart::ChartType::XY2d},
};
