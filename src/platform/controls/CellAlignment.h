// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

namespace controls
{

/// Where a cell's text stands; Default leaves it to the column, and in a column to the left.
enum class CellAlignment : quint8 { Default, Left, Centre, Right };

} // namespace controls
