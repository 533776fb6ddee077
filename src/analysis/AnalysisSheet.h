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

/// What the list of analyses shows, as it is to be put on a sheet.
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

/// Takes headings and rows from the grid, rows of height 0 left out. The column "Date" holds what stands in the grid's Cultivar.
AnalysisSheet analysisSheet(const controls::FlexGrid &grid, const AnalysisKind &kind);

/// Writes the sheet into the open template; `progress` gets the percent now and then.
void writeAnalysisSheet(const excel::Application &application, const AnalysisSheet &sheet,
                        const std::function<void(double percent)> &progress);

/// Fills the template, saves it in Reports/Pest Monitor Reports and hands it over; the main window shows how far it is.
void printAnalyses(ScreenHost &host, const AnalysisSheet &sheet);
