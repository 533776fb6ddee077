// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"

namespace jet
{

/// A page of rows: a table of slots at its beginning, the rows from its end downwards.
class DataPage
{
public:
    /// Instead of the owner, on the pages of long values.
    static constexpr std::uint32_t LongValueOwner = 0x4C41564C;

    explicit DataPage(Bytes page) : page_(page) {}

    /// Page of the definition of the table that the rows belong to; 0 for usage maps.
    std::uint32_t owner() const { return page_.longAt(4); }
    std::uint32_t slotCount() const;
    /// What the page itself counts, and what there is between the table of slots and the rows.
    std::uint16_t freeBytes() const { return page_.shortAt(2); }
    std::size_t unusedBytes() const;

    /// Deleted, or the new location of a row that is reached through its pointer.
    bool isSkipped(std::uint32_t slot) const { return (entry(slot) & 0x8000) != 0; }
    /// In the slot is a pointer to the new location of a row that has outgrown this page.
    bool isPointer(std::uint32_t slot) const { return (entry(slot) & 0x4000) != 0; }
    bool isDeleted(std::uint32_t slot) const { return (entry(slot) & 0xC000) == 0xC000; }
    Bytes bytes(std::uint32_t slot) const;

private:
    std::uint16_t entry(std::uint32_t slot) const { return page_.shortAt(14 + 2 * std::size_t{slot}); }

    Bytes page_;
};

} // namespace jet
