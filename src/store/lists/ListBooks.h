// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/lists/ListPlan.h"

#include <QStringList>

namespace lists
{

/// The rows of a list as texts, headings first: the key, then every column.
std::vector<QStringList> sheetRows(const FarmLists &lists, List list);

/// Writes all lists to a workbook, a sheet each; to a `.csv`, the one list that the file is named after. An existing file is
/// replaced. Errors name the file.
void writeBook(const FarmLists &lists, const QString &path);
void writeCsv(const FarmLists &lists, List list, const QString &path);

/// Writes the refused rows of what was given to a workbook, as they were given and with the reasons in a last column, so that
/// they can be filled in and opened again.
void writeRefused(const std::vector<GivenList> &given, const std::vector<Fault> &faults, const QString &path);

/// Faults as rows of text, headings first: sheet, row, column, value, reason.
std::vector<QStringList> faultRows(const std::vector<Fault> &faults);

} // namespace lists
