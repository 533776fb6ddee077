// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/TableDef.h"

namespace dao
{

/// The value as the field stores it: numbers rounded to the field's type, null in a Boolean as False. 6 beyond the field's range,
/// 3163 text too long, 3315 zero-length text where it is not allowed, 3421 a value of another kind.
Value convertedFor(const Field &field, const Value &value);

} // namespace dao
