// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "mainmodule/PageLines.h"

namespace mainmodule
{

/// Whether the texts of a line have the filter's text, without regard to case.
bool fitsFilter(const PageLine &line, const QString &filter);

/// Sorts as people count: "Block 2" comes before "Block 10". Lines that are equal in the column keep their order.
void sortLines(std::vector<PageLine> &lines, int column, bool descending);

} // namespace mainmodule
