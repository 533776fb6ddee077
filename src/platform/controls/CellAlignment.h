// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

namespace controls
{

/// Horizontal alignment of a cell's text. Default takes the column's; a column's Default is Left.
enum class CellAlignment : quint8 { Default, Left, Centre, Right };

} // namespace controls
