// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace controls
{

/// Marks of the grids, as long decimal colour values in blue-green-red order. A cell never painted has none of them.
namespace mark
{
inline constexpr int White = 16777215;
inline constexpr int Yellow = 65535;
inline constexpr int Red = 255;
inline constexpr int Green = 65280;
inline constexpr int PaleYellow = 0xC0FFFF;
} // namespace mark

} // namespace controls
