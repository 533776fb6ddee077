// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/MenuEntry.h"

#include <vector>

/// What each picture of the menu opens: every screen of the program. A picture that is not told here shows as not yet available.
std::vector<MenuEntry> menuEntries();
