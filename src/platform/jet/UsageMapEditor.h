// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Value.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace jet
{

class Pager;

/// Gives pages out and takes them back. Only pages behind the end of the file are given out, and those that were taken back and
/// marked so: the map of free pages of a file that was not closed properly may name pages in use, but none of them is marked.
class PageAllocator
{
public:
    explicit PageAllocator(Pager &pager) : pager_(pager) {}

    Pager &pager() { return pager_; }
    /// A page of zeros, taken out of the map of free pages.
    std::uint32_t allocate();
    void release(std::uint32_t page);
    /// Whether the slots of deleted rows of a table may be used again, by the page of its definition; nothing before that is
    /// known.
    std::optional<bool> &reusableSlots(std::uint32_t definitionPage) { return reusableSlots_[definitionPage]; }
    /// What was given back in a change that did not come about stays in use.
    void revert();
    void accept();

private:
    /// The marked pages of earlier sessions, once.
    void findFreePages();

    Pager &pager_;
    bool isSearched_ = false;
    std::vector<std::uint32_t> free_;
    /// As of the last change that came about.
    std::vector<std::uint32_t> acceptedFree_;
    std::map<std::uint32_t, std::optional<bool>> reusableSlots_;
};

/// Sets or clears the bit of a page in a map. A map that becomes too large for its row gets pages of its own.
void addToMap(PageAllocator &allocator, RowPosition map, std::uint32_t page);
void removeFromMap(PageAllocator &allocator, RowPosition map, std::uint32_t page);

/// Row of a map without pages.
constexpr std::size_t MapRowSize = 69;

} // namespace jet
