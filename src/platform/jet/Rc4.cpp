// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Rc4.h"

#include <cstdint>
#include <numeric>
#include <utility>

namespace jet
{

void applyRc4(const std::array<unsigned char, 4> &key, std::span<unsigned char> bytes)
{
    std::array<std::uint8_t, 256> state;
    std::iota(state.begin(), state.end(), std::uint8_t{0});
    std::uint8_t j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        j = static_cast<std::uint8_t>(j + state[i] + key[i % key.size()]);
        std::swap(state[i], state[j]);
    }
    std::uint8_t i = 0;
    j = 0;
    for (unsigned char &byte : bytes) {
        ++i;
        j = static_cast<std::uint8_t>(j + state[i]);
        std::swap(state[i], state[j]);
        byte ^= state[static_cast<std::uint8_t>(state[i] + state[j])];
    }
}

} // namespace jet
