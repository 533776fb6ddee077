// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/lists/ListPlan.h"

namespace lists
{

/// What a workbook gives, list by list, and what is wrong with its sheets.
struct GivenBook {
    std::vector<GivenList> lists;
    std::vector<Fault> faults;
};

/// Finds the lists in a workbook: a sheet by its name, else by its headings. Rows above the headings, blank rows and blank
/// columns are skipped. A sheet that fits several lists is taken for `expected`. Error 5, one sentence, when no sheet is a list.
GivenBook givenBook(const sheets::Workbook &book, std::optional<List> expected = std::nullopt);

/// Rows pasted over a list from a column on, or by their headings when the first row has them. The columns are those that a
/// screen shows, in its order.
GivenList givenRows(List list, const std::vector<std::vector<sheets::Cell>> &rows, const std::vector<int> &columns,
                    int firstColumn);

/// Rows of crops as paths: group, type, variety, from a column on. A blank cell before a filled one means the name above it,
/// first of all those of `context`. Gives groups, types and varieties, to be matched by name. Headings in the first row are
/// skipped.
std::vector<GivenList> givenCrops(const std::vector<std::vector<sheets::Cell>> &rows, int firstColumn,
                                  const QStringList &context = {});

} // namespace lists
