// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>

#include <cstdint>

namespace basic
{

/// The number a text begins with: blanks skipped, an optional sign, digits and one point; anything after it is
/// ignored, a text without a number is 0. "12ab" is 12, "-3.5" is -3.5, "1e3" is 1, "ab" is 0.
double Val(QStringView text);

/// Rounds half to even, as assigning to an integer does.
double roundHalfEven(double value);

/// Rounds half to even and checks the range; error 6 beyond it.
std::int16_t toInteger16(double value);
std::int32_t toLong32(double value);

} // namespace basic
