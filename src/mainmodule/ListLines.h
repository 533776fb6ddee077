// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "mainmodule/PageLines.h"

namespace mainmodule
{

/// The rows of one list, a line each.
std::unique_ptr<PageLines> listLines(lists::List list);

} // namespace mainmodule
