// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/BiffRecords.h"

/// The order in which records stand, and the records of a file that was never read.
namespace excel::biff
{

/// Records that the model tells. Each stands in the kept records once, at the place of its first, and is written there.
bool isToldByBook(std::uint16_t id);
bool isToldBySheet(std::uint16_t id);

/// Puts a place holder for every told record that is missing where it belongs.
void completeBook(std::vector<model::Record> &records);
void completeSheet(std::vector<model::Record> &records);

/// All records, fonts and formats of a new workbook and of a new sheet.
const model::KeptBook &standardBook();
const std::vector<model::Record> &standardSheet();

} // namespace excel::biff
