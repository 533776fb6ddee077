// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/RecordsSheet.h"

#include <cstdint>
#include <functional>
#include <optional>

class ScreenHost;

namespace reports
{

/// A row of one of the two lists to choose from.
struct ReportChoice {
    std::int32_t key = 0;
    QString name = {};
    bool chosen = false;
    /// Of a block, 0 when it states none.
    int points = 0;
};

enum class RecordsNesting { ByPest, ByBlock };

struct RecordsOrder {
    RecordsNesting nesting = RecordsNesting::ByPest;
    QString farm = {};
    QDate from = {};
    QDate to = {};
    /// All rows of the lists, chosen or not: the outer ones are the steps of the progress.
    std::vector<ReportChoice> pests = {};
    std::vector<ReportChoice> blocks = {};
};

/// The data source of the report.
struct RecordsSource {
    /// Highest point captured for a pest; nothing without records.
    std::function<std::optional<int>(std::int32_t pest)> pointsOfPest = {};
    /// By date of completion, instruction and point.
    std::function<std::vector<PestRecord>(std::int32_t block, std::int32_t pest)> records = {};
};

/// The whole sheet; `progress` gets the percent after each row of the outer list.
void writeRecords(RecordsSheet &sheet, const RecordsOrder &order, const RecordsSource &source,
                  const std::function<void(double percent)> &progress);

/// Fills the template, saves it in Reports/Pest Monitor Reports and opens it; the main window shows the progress.
void printRecords(ScreenHost &host, const RecordsOrder &order);

} // namespace reports
