// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/BiffPassthrough.h"
#include "platform/excel/BiffRecords.h"

/// The order of the records, and the records of a new file.
namespace excel::biff
{

/// Records that are written from the model. The passthrough records hold one placeholder for each, at its first position.
bool isModelledByBook(std::uint16_t id);
bool isModelledBySheet(std::uint16_t id);

/// Inserts the placeholders of modelled records that the file does not have.
void completeBook(std::vector<BiffRecord> &records);
void completeSheet(std::vector<BiffRecord> &records);

/// All records, fonts and formats of a new workbook and of a new sheet.
const BookPassthrough &standardBook();
const std::vector<BiffRecord> &standardSheet();

} // namespace excel::biff
