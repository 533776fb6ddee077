// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The per-block field sheets as a loop in C would write them: the same cells, looks, merges, heights, widths and page set-up
/// straight through libxlsxwriter. Ends the process on any error.
void writeRawBlockSheets(const QString &path, int blocks, int points, int pests);
