// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/RowSpace.h"

#include "platform/jet/DataPageEditor.h"
#include "platform/jet/Pager.h"
#include "platform/jet/UsageMap.h"
#include "platform/jet/UsageMapEditor.h"

#include <algorithm>

namespace jet
{

namespace
{

/// A page that has left the map of pages with free space comes back once it has this many bytes free.
constexpr std::size_t FreeAgain = 512;

} // namespace

RowSpace::RowSpace(PageAllocator &allocator, std::uint32_t owner, RowPosition ownedPages, RowPosition freePages,
                   std::function<bool()> mayReuseSlots)
    : allocator_(allocator), owner_(owner), ownedMap_(ownedPages), freeMap_(freePages), mayReuseSlots_(std::move(mayReuseSlots)),
      freePages_(pagesInMap(allocator.pager(), freePages))
{
}

RowPosition RowSpace::add(Bytes row, std::uint16_t flags)
{
    while (!freePages_.empty()) {
        if (const std::optional<RowPosition> position = addOn(freePages_.back(), row, flags)) {
            return *position;
        }
        removeFromMap(allocator_, freeMap_, freePages_.back());
        freePages_.pop_back();
    }
    const std::uint32_t page = allocator_.allocate();
    DataPageEditor::format(allocator_.pager(), page, owner_);
    addToMap(allocator_, ownedMap_, page);
    addToMap(allocator_, freeMap_, page);
    freePages_.push_back(page);
    const std::optional<RowPosition> position = addOn(page, row, flags);
    if (!position) {
        throw Fault(QStringLiteral("a row of %1 bytes does not fit on a page").arg(row.size()));
    }
    return *position;
}

std::optional<RowPosition> RowSpace::addOn(std::uint32_t page, Bytes row, std::uint16_t flags)
{
    DataPageEditor editor(allocator_.pager(), page, owner_);
    if (editor.canAdd(row.size())) {
        return RowPosition{page, editor.add(row, flags)};
    }
    // Later slots are filled first, so that rows are found in the order of their making where that is possible.
    const std::optional<std::uint32_t> slot = reusableSlot(page, row.size());
    if (!slot || !mayReuseSlots_()) {
        return std::nullopt;
    }
    editor.set(*slot, row, flags);
    return RowPosition{page, static_cast<std::uint8_t>(*slot)};
}

std::optional<std::uint32_t> RowSpace::reusableSlot(std::uint32_t number, std::size_t length) const
{
    const DataPage page(allocator_.pager().page(number, PageType::Data));
    for (std::uint32_t slot = 0; slot < page.slotCount(); ++slot) {
        if (page.isDeleted(slot) && page.unusedBytes() + page.bytes(slot).size() >= length) {
            return slot;
        }
    }
    return std::nullopt;
}

bool RowSpace::set(RowPosition position, Bytes row, std::uint16_t flags)
{
    DataPageEditor editor(allocator_.pager(), position.page, owner_);
    if (!editor.canSet(position.slot, row.size())) {
        return false;
    }
    editor.set(position.slot, row, flags);
    const bool isListed = std::find(freePages_.begin(), freePages_.end(), position.page) != freePages_.end();
    if (!isListed && editor.page().unusedBytes() >= FreeAgain) {
        addToMap(allocator_, freeMap_, position.page);
        // Before the page that is being filled.
        freePages_.insert(freePages_.begin(), position.page);
    }
    return true;
}

void RowSpace::remove(RowPosition position)
{
    set(position, {}, SlotFlag::Deleted);
}

} // namespace jet
