// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Colours of grid cells, as long decimal values in blue-green-red order. A cell without a colour has none of them.
namespace controls::cellColour
{

inline constexpr int White = 16777215;
inline constexpr int Yellow = 65535;
inline constexpr int Red = 255;
inline constexpr int Green = 65280;
inline constexpr int PaleYellow = 0xC0FFFF;

} // namespace controls::cellColour
