// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace controls
{

/// Twips of a stored width or height to a logical pixel of the screen.
inline constexpr int TwipsPerPixel = 10;

} // namespace controls
