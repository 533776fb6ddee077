// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Value.h"

#include <cstdint>
#include <vector>

namespace jet
{

class Pager;

/// The pages in a usage map, ascending: a row with a bit for each page, or with the numbers of pages that are such bits. Pages
/// beyond the end of the file are left out, as the map of free pages of the whole file names them.
std::vector<std::uint32_t> pagesInMap(const Pager &pager, RowPosition map);
/// The pages that hold the bits of a map which is too large for its row; empty for any other.
std::vector<std::uint32_t> pagesOfMap(const Pager &pager, RowPosition map);

} // namespace jet
