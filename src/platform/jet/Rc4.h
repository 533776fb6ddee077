// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace jet
{

/// Masks or unmasks bytes in place; the cipher is its own inverse. It hides nothing: the key is in the file.
void applyRc4(const std::array<unsigned char, 4> &key, std::span<unsigned char> bytes);

} // namespace jet
