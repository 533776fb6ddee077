// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/DataPage.h"

#include "platform/jet/Header.h"

namespace jet
{

namespace
{

constexpr std::uint16_t OffsetMask = 0x1FFF;
/// A row pointer has one byte for the slot.
constexpr std::uint32_t MostSlots = 256;

} // namespace

std::uint32_t DataPage::slotCount() const
{
    const std::uint32_t count = page_.shortAt(12);
    if (count > MostSlots) {
        throw Fault(QStringLiteral("the page counts %1 rows").arg(count));
    }
    return count;
}

std::size_t DataPage::unusedBytes() const
{
    const std::uint32_t count = slotCount();
    const std::size_t slotsEnd = 14 + 2 * std::size_t{count};
    const std::size_t rowsBegin = count == 0 ? PageSize : entry(count - 1) & OffsetMask;
    if (rowsBegin < slotsEnd || rowsBegin > PageSize) {
        throw Fault(QStringLiteral("the last row of the page is outside it"));
    }
    return rowsBegin - slotsEnd;
}

Bytes DataPage::bytes(std::uint32_t slot) const
{
    const std::uint32_t count = slotCount();
    if (slot >= count) {
        throw Fault(QStringLiteral("the page has no such row"));
    }
    const std::size_t begin = entry(slot) & OffsetMask;
    const std::size_t end = slot == 0 ? PageSize : entry(slot - 1) & OffsetMask;
    if (begin < 14 + 2 * count || end < begin || end > PageSize) {
        throw Fault(QStringLiteral("the row is outside its page"));
    }
    return page_.part(begin, end - begin);
}

} // namespace jet
