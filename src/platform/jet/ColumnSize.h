// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/TableDefinition.h"

#include <cstddef>

namespace jet
{

/// Bytes that a column takes in the fixed part of a row: those of its type, whatever its definition says, or where the type says
/// nothing the definition's. None for a Boolean, which is in the null mask.
std::size_t fixedBytes(const ColumnDefinition &column);

} // namespace jet
