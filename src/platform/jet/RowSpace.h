// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"
#include "platform/jet/Value.h"

#include <functional>
#include <optional>
#include <vector>

namespace jet
{

class PageAllocator;

/// The pages that hold the rows of one table, or the long values of one column, with their two maps.
class RowSpace
{
public:
    /// `mayReuseSlots` is asked before the slot of a deleted row is used again, which must not happen while an entry of an index
    /// might point at it.
    RowSpace(PageAllocator &allocator, std::uint32_t owner, RowPosition ownedPages, RowPosition freePages,
             std::function<bool()> mayReuseSlots);

    /// A row at a new position.
    RowPosition add(Bytes row, std::uint16_t flags);
    /// Changes the row at a position; false when its page is too full for it.
    bool set(RowPosition position, Bytes row, std::uint16_t flags);
    void remove(RowPosition position);

private:
    std::optional<RowPosition> addOn(std::uint32_t page, Bytes row, std::uint16_t flags);
    std::optional<std::uint32_t> reusableSlot(std::uint32_t page, std::size_t length) const;

    PageAllocator &allocator_;
    std::uint32_t owner_;
    RowPosition ownedMap_;
    RowPosition freeMap_;
    std::function<bool()> mayReuseSlots_;
    /// Pages with free space by the map, the one to fill last.
    std::vector<std::uint32_t> freePages_;
};

} // namespace jet
