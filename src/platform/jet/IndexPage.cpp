// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/IndexPage.h"

#include "platform/jet/Pager.h"

#include <QtEndian>

#include <algorithm>
#include <numeric>

namespace jet
{

namespace
{

constexpr std::size_t OwnerOffset = 4;
constexpr std::size_t PreviousOffset = 12;
constexpr std::size_t NextOffset = 16;
constexpr std::size_t TailOffset = 20;
constexpr std::size_t PrefixOffset = 24;
constexpr std::size_t EndsOffset = 27;
constexpr std::size_t EntriesOffset = 0x1E0;
constexpr std::size_t EndsSize = EntriesOffset - EndsOffset;

std::size_t sizeOf(const IndexPage &page)
{
    return std::accumulate(page.entries.begin(), page.entries.end(), std::size_t{0},
                           [](std::size_t sum, const std::string &entry) { return sum + entry.size(); });
}

/// Bytes that all keys of the page begin with: what the first and the last share.
std::size_t sharedPrefix(const IndexPage &page)
{
    if (page.entries.size() < 2) {
        return 0;
    }
    const std::string &first = page.entries.front();
    const std::string &last = page.entries.back();
    const std::size_t behindKey = IndexPage::RowBytes + (page.isLeaf ? 0 : IndexPage::ChildBytes);
    const std::size_t longest = std::min(first.size(), last.size()) - behindKey;
    return static_cast<std::size_t>(
        std::mismatch(first.begin(), first.begin() + static_cast<std::ptrdiff_t>(longest), last.begin()).first - first.begin());
}

void put(unsigned char *page, std::size_t offset, std::uint32_t value)
{
    qToLittleEndian(value, page + offset);
}

} // namespace

std::uint32_t IndexPage::child(std::size_t index) const
{
    if (index >= entries.size()) {
        return tail;
    }
    const std::string &entry = entries[index];
    return qFromBigEndian<std::uint32_t>(entry.data() + entry.size() - ChildBytes);
}

bool IndexPage::fits() const
{
    const std::size_t size = sizeOf(*this);
    return size <= Capacity || size - sharedPrefix(*this) * (entries.size() - 1) <= Capacity;
}

IndexPage readIndexPage(Bytes bytes)
{
    IndexPage page;
    const std::uint8_t type = bytes.byteAt(0);
    if (type != PageType::IndexLeaf && type != PageType::IndexNode) {
        throw Fault(QStringLiteral("it leads to a page of kind %1, which is none of an index").arg(type));
    }
    page.isLeaf = type == PageType::IndexLeaf;
    page.owner = bytes.longAt(OwnerOffset);
    page.previous = bytes.longAt(PreviousOffset);
    page.next = bytes.longAt(NextOffset);
    page.tail = page.isLeaf ? 0 : bytes.longAt(TailOffset);
    const std::size_t prefixLength = bytes.shortAt(PrefixOffset);
    const std::size_t shortest = IndexPage::RowBytes + (page.isLeaf ? 0 : IndexPage::ChildBytes);
    const Bytes ends = bytes.part(EndsOffset, EndsSize);
    const Bytes entries = bytes.from(EntriesOffset);
    std::size_t begin = 0;
    for (std::size_t end = 1; end < 8 * EndsSize && end <= entries.size(); ++end) {
        if (((ends.byteAt(end / 8) >> (end % 8)) & 1) == 0) {
            continue;
        }
        const Bytes own = entries.part(begin, end - begin);
        const std::string_view rest(reinterpret_cast<const char *>(own.data()), own.size());
        if (page.entries.empty()) {
            if (prefixLength > rest.size()) {
                throw Fault(QStringLiteral("the entries of the index page share more bytes than the first has"));
            }
            page.entries.emplace_back(rest);
        } else {
            page.entries.push_back(page.entries.front().substr(0, prefixLength).append(rest));
        }
        if (page.entries.back().size() <= shortest) {
            throw Fault(QStringLiteral("an entry of the index page has no key"));
        }
        begin = end;
    }
    return page;
}

std::array<unsigned char, 4096> indexPageBytes(const IndexPage &page)
{
    std::array<unsigned char, PageSize> bytes{};
    bytes[0] = page.isLeaf ? PageType::IndexLeaf : PageType::IndexNode;
    bytes[1] = 1;
    put(bytes.data(), OwnerOffset, page.owner);
    put(bytes.data(), PreviousOffset, page.previous);
    put(bytes.data(), NextOffset, page.next);
    put(bytes.data(), TailOffset, page.tail);
    // Spelt out where that fits: the next entry then need not share anything.
    const std::size_t prefix = sizeOf(page) <= IndexPage::Capacity ? 0 : sharedPrefix(page);
    qToLittleEndian(static_cast<std::uint16_t>(prefix), bytes.data() + PrefixOffset);
    std::size_t end = 0;
    for (const std::string &entry : page.entries) {
        const std::size_t skipped = end == 0 ? 0 : prefix;
        std::copy(entry.begin() + static_cast<std::ptrdiff_t>(skipped), entry.end(),
                  bytes.begin() + static_cast<std::ptrdiff_t>(EntriesOffset + end));
        end += entry.size() - skipped;
        unsigned char &mark = bytes[EndsOffset + end / 8];
        mark = static_cast<unsigned char>(mark | 1U << (end % 8));
    }
    qToLittleEndian(static_cast<std::uint16_t>(IndexPage::Capacity - end), bytes.data() + 2);
    return bytes;
}

std::string rowEntry(const std::string &key, RowPosition row)
{
    std::array<char, IndexPage::RowBytes> bytes;
    qToBigEndian<std::uint32_t>(row.page << 8 | row.slot, bytes.data());
    return key + std::string(bytes.data(), bytes.size());
}

std::string nodeEntry(const std::string &lastEntry, std::uint32_t child)
{
    std::array<char, IndexPage::ChildBytes> bytes;
    qToBigEndian(child, bytes.data());
    return lastEntry + std::string(bytes.data(), bytes.size());
}

RowPosition rowOf(const std::string &leafEntry)
{
    const auto pointer = qFromBigEndian<std::uint32_t>(leafEntry.data() + leafEntry.size() - IndexPage::RowBytes);
    return {pointer >> 8, static_cast<std::uint8_t>(pointer)};
}

std::string_view keyOf(const std::string &leafEntry)
{
    return std::string_view(leafEntry).substr(0, leafEntry.size() - IndexPage::RowBytes);
}

} // namespace jet
