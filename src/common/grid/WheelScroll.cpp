// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/grid/WheelScroll.h"

#include <cstdlib>

std::uint16_t wheelAmount(int turn)
{
    return static_cast<std::uint16_t>(turn);
}

bool isForward(std::uint16_t amount)
{
    constexpr unsigned topBits = 0xF000;
    return (amount & topBits) == 0;
}

std::optional<WheelScroll> takeWheel(std::int32_t &remainder, bool up, std::uint16_t amount, int systemLines)
{
    constexpr int pageMode = 65535;
    constexpr int maxLines = 32;
    constexpr int defaultLines = 3;
    // A backward turn passes a notch at once, however small it is, since its amount is unsigned.
    remainder += amount;
    if (std::abs(remainder) < WheelNotch) {
        return std::nullopt;
    }
    remainder %= WheelNotch;
    if (systemLines < 0 || systemLines >= pageMode) {
        return WheelScroll{up ? ScrollCode::PageUp : ScrollCode::PageDown, 1};
    }
    const int lines = systemLines == 0 || systemLines > maxLines ? defaultLines : systemLines;
    return WheelScroll{up ? ScrollCode::LineUp : ScrollCode::LineDown, lines};
}
