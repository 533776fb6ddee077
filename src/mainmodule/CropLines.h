// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "mainmodule/PageLines.h"

namespace mainmodule
{

/// Crop groups, below each its types, below each of them its varieties. The cell to the right of a name is for what belongs to
/// it.
std::unique_ptr<PageLines> cropLines();

} // namespace mainmodule
