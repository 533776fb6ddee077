// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/MenuEntry.h"

#include <vector>

/// The screens of the program and the menu pictures that open them. Other pictures show as not yet available.
std::vector<MenuEntry> menuEntries();
