// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/AnalysisKinds.h"

#include <QDate>

/// Lays out the grid for a kind of analysis and fills it with the analyses of a period, by block name and date. One empty row
/// follows, which becomes the current one. A planting without a variety leaves its cells empty.
///
/// Without a kind the grid gets only the common headings. An error of the store is raised and leaves the empty layout.
void Fill_LeaveGrid(controls::FlexGrid &grid, const AnalysisKind *kind, QDate from, QDate to, clsPestMONNew &objPestMON);
