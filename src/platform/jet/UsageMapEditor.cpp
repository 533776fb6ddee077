// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/UsageMapEditor.h"

#include "platform/jet/DataPage.h"
#include "platform/jet/Pager.h"
#include "platform/jet/UsageMap.h"

#include <algorithm>
#include <cstring>

namespace jet
{

namespace
{

constexpr RowPosition FreePages{1, 0};
constexpr std::uint8_t Inline = 0;
constexpr std::size_t InlineHeader = 5;
constexpr std::size_t MapPageHeader = 4;
/// Begins a page that was taken back. A page in use begins with its type, which is never 0.
constexpr char FreeMark[16] = "\0\1free page";
constexpr std::uint32_t PagesPerMapPage = (PageSize - MapPageHeader) * 8;

void setBit(unsigned char *bits, std::size_t index, bool isSet)
{
    const auto mask = static_cast<unsigned char>(1U << (index % 8));
    bits[index / 8] = static_cast<unsigned char>(isSet ? bits[index / 8] | mask : bits[index / 8] & ~mask);
}

/// One map, found anew for every change, since a change may give it another shape.
class Map
{
public:
    Map(PageAllocator &allocator, RowPosition position) : allocator_(allocator), position_(position) {}

    void set(std::uint32_t page, bool isSet)
    {
        const Bytes row = this->row();
        if (row.byteAt(0) == Inline) {
            setInline(row, page, isSet);
        } else {
            setReferenced(row, page, isSet);
        }
    }

private:
    /// In the map of free pages, whatever has no bit is free.
    bool holdsFreePages() const { return position_ == FreePages; }
    Bytes row() const { return DataPage(allocator_.pager().page(position_.page, PageType::Data)).bytes(position_.slot); }
    unsigned char *editRow()
    {
        const Bytes before = row();
        const std::size_t offset = static_cast<std::size_t>(before.data() - allocator_.pager().page(position_.page).data());
        return allocator_.pager().edit(position_.page) + offset;
    }

    void setInline(Bytes row, std::uint32_t page, bool isSet)
    {
        const std::uint32_t first = row.longAt(1);
        const Bytes bits = row.from(InlineHeader);
        if (page >= first && page - first < 8 * bits.size()) {
            setBit(editRow() + InlineHeader, page - first, isSet);
            return;
        }
        if (isSet == holdsFreePages()) {
            return;
        }
        const bool isEmpty = std::all_of(bits.data(), bits.data() + bits.size(), [](unsigned char byte) { return byte == 0; });
        if (isEmpty && !holdsFreePages()) {
            qToLittleEndian(page, editRow() + 1);
            setBit(editRow() + InlineHeader, 0, true);
            return;
        }
        refer();
        set(page, isSet);
    }

    /// Moves the bits of the row to pages of their own.
    void refer()
    {
        const Bytes before = row();
        const std::uint32_t first = before.longAt(1);
        const std::vector<unsigned char> bits(before.data() + InlineHeader, before.data() + before.size());
        unsigned char *const bytes = editRow();
        std::fill_n(bytes, before.size(), std::uint8_t{0});
        bytes[0] = 1;
        for (std::size_t i = 0; i < 8 * bits.size(); ++i) {
            const bool isSet = ((bits[i / 8] >> (i % 8)) & 1) != 0;
            if (isSet != holdsFreePages()) {
                setReferenced(row(), first + static_cast<std::uint32_t>(i), isSet);
            }
        }
        if (holdsFreePages()) {
            for (std::uint32_t page = 0; page < first; ++page) {
                setReferenced(row(), page, false);
            }
        }
    }

    void setReferenced(Bytes row, std::uint32_t page, bool isSet)
    {
        const std::size_t at = 1 + 4 * std::size_t{page / PagesPerMapPage};
        if (at + 4 > row.size()) {
            throw Fault(QStringLiteral("it is full"));
        }
        std::uint32_t mapPage = row.longAt(at);
        if (mapPage == 0) {
            if (isSet == holdsFreePages()) {
                return;
            }
            mapPage = makeMapPage(at);
        }
        allocator_.pager().page(mapPage, PageType::UsageMap);
        setBit(allocator_.pager().edit(mapPage) + MapPageHeader, page % PagesPerMapPage, isSet);
    }

    std::uint32_t makeMapPage(std::size_t pointerOffset)
    {
        // The page of the map of free pages cannot be taken by way of that map.
        const std::uint32_t mapPage = holdsFreePages() ? allocator_.pager().append() : allocator_.allocate();
        unsigned char *const bytes = allocator_.pager().edit(mapPage);
        std::fill_n(bytes, PageSize, std::uint8_t{holdsFreePages() ? std::uint8_t{0xFF} : std::uint8_t{0}});
        bytes[0] = PageType::UsageMap;
        bytes[1] = 1;
        bytes[2] = bytes[3] = 0;
        qToLittleEndian(mapPage, editRow() + pointerOffset);
        if (holdsFreePages()) {
            setReferenced(row(), mapPage, false);
        }
        return mapPage;
    }

    PageAllocator &allocator_;
    RowPosition position_;
};

} // namespace

void PageAllocator::findFreePages()
{
    isSearched_ = true;
    for (const std::uint32_t page : pagesInMap(pager_, FreePages)) {
        if (std::memcmp(pager_.page(page).data(), FreeMark, sizeof FreeMark) == 0) {
            free_.push_back(page);
            acceptedFree_.push_back(page);
        }
    }
}

std::uint32_t PageAllocator::allocate()
{
    if (free_.empty() && !isSearched_) {
        findFreePages();
    }
    std::uint32_t page = 0;
    if (free_.empty()) {
        page = pager_.append();
    } else {
        page = free_.back();
        free_.pop_back();
        std::fill_n(pager_.edit(page), PageSize, std::uint8_t{0});
    }
    Map(*this, FreePages).set(page, false);
    return page;
}

void PageAllocator::release(std::uint32_t page)
{
    Map(*this, FreePages).set(page, true);
    std::memcpy(pager_.edit(page), FreeMark, sizeof FreeMark);
    free_.push_back(page);
}

void PageAllocator::revert()
{
    free_ = acceptedFree_;
}

void PageAllocator::accept()
{
    acceptedFree_ = free_;
}

void addToMap(PageAllocator &allocator, RowPosition map, std::uint32_t page)
{
    Map(allocator, map).set(page, true);
}

void removeFromMap(PageAllocator &allocator, RowPosition map, std::uint32_t page)
{
    Map(allocator, map).set(page, false);
}

} // namespace jet
