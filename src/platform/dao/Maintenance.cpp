// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Database.h"
#include "platform/dao/Engine.h"

namespace dao
{
} // namespace dao
