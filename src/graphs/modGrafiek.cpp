// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/modGrafiek.h"

std::int16_t ColorComponent(std::int32_t colour, std::int16_t component)
{
    constexpr std::int32_t beyond = 0x1000000;
    constexpr int bits = 8;
    if (component < 1 || component > 3 || colour < 0 || colour >= beyond) {
        return -1;
    }
    return static_cast<std::int16_t>((colour >> (bits * (component - 1))) & 0xFF);
}

std::int32_t colourNumber(const QColor &colour)
{
    return colour.red() | colour.green() << 8 | colour.blue() << 16;
}
