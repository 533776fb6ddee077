// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/BiffPassthrough.h"
#include "platform/excel/BiffRecords.h"

namespace excel::biff
{

/// Data that the sheets of a file share while they are read.
struct SharedParts {
    /// Indexes into `Book::texts` by number in the file, and styles by number of the format.
    std::vector<std::uint32_t> texts;
    std::vector<std::uint32_t> styles;
    /// Limit of rows and merged rows in a file, so that a damaged one cannot exhaust the memory.
    std::size_t rowsLeft = 1'000'000;
    std::size_t mergedRowsLeft = 2'000'000;
};

/// Fills a sheet from its records.
void readSheet(const std::vector<BiffRecord> &records, SharedParts &shared, model::Sheet &sheet);

} // namespace excel::biff
