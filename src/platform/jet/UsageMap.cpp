// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/UsageMap.h"

#include "platform/jet/DataPage.h"
#include "platform/jet/Pager.h"

#include <bit>

namespace jet
{

namespace
{

constexpr std::uint8_t Inline = 0;
constexpr std::uint8_t Referenced = 1;
constexpr std::size_t MapPageHeader = 4;
constexpr std::uint64_t PagesPerMapPage = (PageSize - MapPageHeader) * 8;

void collect(Bytes bits, std::uint64_t firstPage, std::uint32_t pageCount, std::vector<std::uint32_t> &pages)
{
    for (std::size_t i = 0; i < bits.size(); ++i) {
        for (unsigned int rest = bits.byteAt(i); rest != 0; rest &= rest - 1) {
            const std::uint64_t page = firstPage + 8 * i + static_cast<unsigned int>(std::countr_zero(rest));
            if (page >= pageCount) {
                return;
            }
            pages.push_back(static_cast<std::uint32_t>(page));
        }
    }
}

} // namespace

std::vector<std::uint32_t> pagesInMap(const Pager &pager, RowPosition map)
{
    return locating(map.page, map.slot, [&] {
        const Bytes row = DataPage(pager.page(map.page, PageType::Data)).bytes(map.slot);
        std::vector<std::uint32_t> pages;
        switch (row.byteAt(0)) {
        case Inline:
            collect(row.from(5), row.longAt(1), pager.pageCount(), pages);
            break;
        case Referenced:
            for (std::size_t i = 0; 1 + 4 * (i + 1) <= row.size(); ++i) {
                // Without a page when it holds none.
                if (const std::uint32_t mapPage = row.longAt(1 + 4 * i); mapPage != 0) {
                    const Bytes bits = pager.page(mapPage, PageType::UsageMap).from(MapPageHeader);
                    collect(bits, i * PagesPerMapPage, pager.pageCount(), pages);
                }
            }
            break;
        default:
            throw Fault(QStringLiteral("the usage map is of the unknown kind %1").arg(row.byteAt(0)));
        }
        return pages;
    });
}

std::vector<std::uint32_t> pagesOfMap(const Pager &pager, RowPosition map)
{
    std::vector<std::uint32_t> pages;
    const Bytes row = DataPage(pager.page(map.page, PageType::Data)).bytes(map.slot);
    for (std::size_t at = 1; row.byteAt(0) == Referenced && at + 4 <= row.size(); at += 4) {
        if (const std::uint32_t page = row.longAt(at); page != 0) {
            pages.push_back(page);
        }
    }
    return pages;
}

} // namespace jet
