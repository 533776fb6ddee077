// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"
#include "platform/jet/Value.h"

#include <optional>
#include <set>
#include <vector>

namespace jet
{

class PageAllocator;

/// The pages that hold the rows of one table, or the long values of one column, with their two maps.
class RowSpace
{
public:
    /// Whether the slots of rows that were deleted before the file was opened may be used again: not while entries of an index
    /// might point at them.
    enum class SlotReuse { OwnDeletions, All };

    RowSpace(PageAllocator &allocator, std::uint32_t owner, RowPosition ownedPages, RowPosition freePages, SlotReuse reuse);

    /// A row at a new position.
    RowPosition add(Bytes row, std::uint16_t flags);
    /// Changes the row at a position; false when its page has no room for it.
    bool set(RowPosition position, Bytes row, std::uint16_t flags);
    void remove(RowPosition position);

private:
    std::optional<RowPosition> addOn(std::uint32_t page, Bytes row, std::uint16_t flags);
    std::optional<std::uint32_t> reusableSlot(std::uint32_t page, std::size_t length) const;

    PageAllocator &allocator_;
    std::uint32_t owner_;
    RowPosition ownedMap_;
    RowPosition freeMap_;
    SlotReuse reuse_;
    /// Pages with room by the map, the one to fill last.
    std::vector<std::uint32_t> freePages_;
    std::set<RowPosition> ownDeletions_;
};

} // namespace jet
