// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/DataPageEditor.h"

#include "platform/jet/Pager.h"

#include <algorithm>
#include <cstring>

namespace jet
{

namespace
{

constexpr std::size_t FreeBytesOffset = 2;
constexpr std::size_t OwnerOffset = 4;
constexpr std::size_t SlotCountOffset = 12;
constexpr std::size_t SlotsOffset = 14;
constexpr std::uint16_t OffsetMask = 0x1FFF;

std::size_t slotOffset(std::size_t slot)
{
    return SlotsOffset + 2 * slot;
}

} // namespace

void DataPageEditor::format(Pager &pager, std::uint32_t page, std::uint32_t owner)
{
    unsigned char *const bytes = pager.edit(page);
    std::fill_n(bytes, PageSize, std::uint8_t{0});
    bytes[0] = PageType::Data;
    bytes[1] = 1;
    qToLittleEndian(owner, bytes + OwnerOffset);
    qToLittleEndian(static_cast<std::uint16_t>(PageSize - SlotsOffset), bytes + FreeBytesOffset);
}

DataPageEditor::DataPageEditor(Pager &pager, std::uint32_t page, std::uint32_t owner)
    : bytes_(nullptr), page_(pager.page(page, PageType::Data))
{
    locating(page, std::nullopt, [&] {
        if (page_.owner() != owner) {
            throw Fault(QStringLiteral("it belongs to the definition on page %1 and not %2").arg(page_.owner()).arg(owner));
        }
        page_.unusedBytes();
        for (std::uint32_t slot = 0; slot < page_.slotCount(); ++slot) {
            page_.bytes(slot);
        }
    });
    bytes_ = pager.edit(page);
}

bool DataPageEditor::canAdd(std::size_t length) const
{
    return page_.slotCount() < MostSlots && page_.unusedBytes() >= length + 2;
}

std::uint8_t DataPageEditor::add(Bytes row, std::uint16_t flags)
{
    const std::uint32_t slot = page_.slotCount();
    const std::size_t rowsBegin = slotOffset(slot) + page_.unusedBytes();
    const std::size_t begin = rowsBegin - row.size();
    std::copy_n(row.data(), row.size(), bytes_ + begin);
    putShort(slotOffset(slot), begin | flags);
    putShort(SlotCountOffset, slot + 1);
    putShort(FreeBytesOffset, page_.unusedBytes());
    return static_cast<std::uint8_t>(slot);
}

bool DataPageEditor::canSet(std::uint32_t slot, std::size_t length) const
{
    return page_.unusedBytes() + page_.bytes(slot).size() >= length;
}

void DataPageEditor::set(std::uint32_t slot, Bytes row, std::uint16_t flags)
{
    const Bytes old = page_.bytes(slot);
    const std::uint32_t count = page_.slotCount();
    const std::size_t rowsBegin = slotOffset(count) + page_.unusedBytes();
    const auto oldBegin = static_cast<std::size_t>(old.data() - bytes_);
    const std::size_t end = oldBegin + old.size();
    const std::size_t begin = end - row.size();
    // Copied first: the row may be on this page, which now moves.
    const std::string content(reinterpret_cast<const char *>(row.data()), row.size());
    std::memmove(bytes_ + rowsBegin + begin - oldBegin, bytes_ + rowsBegin, oldBegin - rowsBegin);
    std::memcpy(bytes_ + begin, content.data(), content.size());
    for (std::uint32_t other = slot + 1; other < count; ++other) {
        const std::uint16_t entry = qFromLittleEndian<std::uint16_t>(bytes_ + slotOffset(other));
        putShort(slotOffset(other), (entry & ~OffsetMask) | ((entry & OffsetMask) + begin - oldBegin));
    }
    putShort(slotOffset(slot), begin | flags);
    putShort(FreeBytesOffset, page_.unusedBytes());
}

void DataPageEditor::putShort(std::size_t offset, std::size_t value)
{
    qToLittleEndian(static_cast<std::uint16_t>(value), bytes_ + offset);
}

} // namespace jet
