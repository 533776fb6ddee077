// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/DataError.h"

namespace dao
{

using basic::DataError;
using basic::DataErrorNumber;

} // namespace dao
