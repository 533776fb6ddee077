// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace dao
{

inline constexpr const char *CollationName = "FARM";

/// Compares two UTF-8 texts without regard to case and accents: blanks and signs before digits before letters; apostrophes
/// and hyphens count only between texts that are otherwise equal. Negative, 0 or positive.
int compareText(std::string_view left, std::string_view right);

} // namespace dao
