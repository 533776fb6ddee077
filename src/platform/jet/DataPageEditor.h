// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"
#include "platform/jet/DataPage.h"

namespace jet
{

class Pager;

/// Changes the rows of one page. Rows stay packed at the end of the page, in the order of their slots.
class DataPageEditor
{
public:
    static constexpr std::uint32_t MostSlots = 255;

    /// Makes an empty page of rows.
    static void format(Pager &pager, std::uint32_t page, std::uint32_t owner);

    /// A Fault unless the page is a valid one of this owner.
    DataPageEditor(Pager &pager, std::uint32_t page, std::uint32_t owner);

    const DataPage &page() const { return page_; }
    /// Whether a row of that length fits with a slot of its own.
    bool canAdd(std::size_t length) const;
    std::uint8_t add(Bytes row, std::uint16_t flags);
    /// Whether the row in a slot may become that long.
    bool canSet(std::uint32_t slot, std::size_t length) const;
    void set(std::uint32_t slot, Bytes row, std::uint16_t flags);

private:
    void putShort(std::size_t offset, std::size_t value);

    unsigned char *bytes_;
    DataPage page_;
};

/// Flags of a slot.
namespace SlotFlag
{
constexpr std::uint16_t Plain = 0;
constexpr std::uint16_t Pointer = 0x4000;
/// The new location of a row that is reached through its pointer.
constexpr std::uint16_t Moved = 0x8000;
constexpr std::uint16_t Deleted = 0xC000;
} // namespace SlotFlag

} // namespace jet
