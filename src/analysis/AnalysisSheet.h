// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/AnalysisKinds.h"

#include <QDate>
#include <QStringList>

#include <array>
#include <functional>
#include <vector>

namespace excel
{
class Application;
}
class ScreenHost;

/// The visible list of analyses as it is written to a sheet.
struct AnalysisSheet {
    static constexpr std::size_t Columns = 15;
    using Line = std::array<QString, Columns>;

    QString title = {};
    QString farm = {};
    QDate from = {};
    QDate to = {};
    Line headings = {};
    std::vector<Line> lines = {};
};

/// Reads headings and rows from the grid, without rows of height 0. The column "Date" contains the grid's Cultivar.
AnalysisSheet analysisSheet(const controls::FlexGrid &grid, const AnalysisKind &kind);

/// Writes the sheet into the open template; `progress` is called with the percentage.
void writeAnalysisSheet(const excel::Application &application, const AnalysisSheet &sheet,
                        const std::function<void(double percent)> &progress);

/// Fills the template, saves it in Reports/Pest Monitor Reports and opens it; the main window shows the progress.
void printAnalyses(ScreenHost &host, const AnalysisSheet &sheet);
