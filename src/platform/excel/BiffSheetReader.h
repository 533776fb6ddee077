// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/BiffRecords.h"

namespace excel::biff
{

/// What the sheets of a file share while they are read.
struct SharedParts {
    /// Places in `Book::texts` by number in the file, and styles by number of the format.
    std::vector<std::uint32_t> texts;
    std::vector<std::uint32_t> styles;
    /// Rows and merged rows that a whole file may ask for, so that a damaged one cannot take the machine's memory.
    std::size_t rowsLeft = 1'000'000;
    std::size_t mergedRowsLeft = 2'000'000;
};

/// Fills a sheet from the records between its begin and its end.
void readSheet(const std::vector<model::Record> &records, SharedParts &shared, model::Sheet &sheet);

} // namespace excel::biff
