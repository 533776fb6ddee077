// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/DataError.h"

namespace jet
{

using Error = basic::DataError;
using ErrorNumber = basic::DataErrorNumber;

} // namespace jet
