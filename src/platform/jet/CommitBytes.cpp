// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/CommitBytes.h"

#include <algorithm>

namespace jet::CommitBytes
{

namespace
{

constexpr std::size_t Begin = 0xE00;
constexpr int Pairs = 256;

} // namespace

std::size_t offsetOf(int slot)
{
    return Begin + Size * static_cast<std::size_t>(slot + 1);
}

void setNew(unsigned char *firstPage)
{
    for (int slot = -1; slot < Pairs - 1; ++slot) {
        firstPage[offsetOf(slot)] = 0;
        firstPage[offsetOf(slot) + 1] = 1;
    }
}

void setWriting(unsigned char *firstPage, int slot)
{
    std::fill_n(firstPage + offsetOf(slot), Size, std::uint8_t{0});
}

void setWritten(unsigned char *firstPage, int slot)
{
    unsigned char *const pair = firstPage + offsetOf(slot);
    ++pair[0];
    pair[1] = 1;
}

std::vector<int> writers(Bytes firstPage)
{
    std::vector<int> found;
    bool isUsed = false;
    for (int slot = -1; slot < Pairs - 1; ++slot) {
        const Bytes pair = firstPage.part(offsetOf(slot), Size);
        isUsed = isUsed || pair.shortAt(0) != 0;
        if (pair.byteAt(1) == 0) {
            found.push_back(slot);
        }
    }
    return isUsed ? found : std::vector<int>();
}

} // namespace jet::CommitBytes
