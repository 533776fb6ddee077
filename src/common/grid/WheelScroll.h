// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

/// Kinds of scrolling, numbered as in a window system's scroll message.
enum class ScrollCode { LineUp = 0, LineDown = 1, PageUp = 2, PageDown = 3 };

struct WheelScroll {
    ScrollCode code;
    /// How often to scroll.
    int times;

    bool operator==(const WheelScroll &) const = default;
};

/// One notch of a wheel.
inline constexpr std::int32_t WheelNotch = 120;

/// A wheel message's amount: the turn as an unsigned word, so that a backward notch of -120 is 65416.
std::uint16_t wheelAmount(int turn);

/// Whether an amount is a forward turn: its top four bits are clear.
bool isForward(std::uint16_t amount);

/// Adds the amount to the remainder; a full notch gives a scroll and leaves the rest as remainder. `systemLines` is the system's
/// lines per notch; -1, and 65535 and above, mean a page per notch, 0 and more than 32 mean three lines.
std::optional<WheelScroll> takeWheel(std::int32_t &remainder, bool up, std::uint16_t amount, int systemLines);
