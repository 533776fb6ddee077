// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"
#include "platform/jet/Value.h"

#include <array>
#include <string>
#include <vector>

namespace jet
{

/// A page of an index. The entries of a leaf are the key, then page (three bytes) and slot of the row, big-endian. Those of a
/// node are the last entry below a child, then the page of the child in four bytes; the last child of all may be named apart, as
/// the tail, and then has no entry: growth at the end of the index so changes no node.
struct IndexPage {
    /// Behind the key of an entry.
    static constexpr std::size_t RowBytes = 4;
    static constexpr std::size_t ChildBytes = 4;
    /// Bytes for entries on one page.
    static constexpr std::size_t Capacity = 0xE20;

    bool isLeaf = true;
    /// Page of the table's definition.
    std::uint32_t owner = 0;
    /// Neighbours of the same level, 0 for none; nodes are linked below one parent alone.
    std::uint32_t previous = 0;
    std::uint32_t next = 0;
    std::uint32_t tail = 0;
    /// Ascending, prefixes spelt out.
    std::vector<std::string> entries;

    std::size_t childCount() const { return entries.size() + (tail != 0 ? 1 : 0); }
    std::uint32_t child(std::size_t index) const;
    /// Whether the entries fit, with the prefix that they share stored once.
    bool fits() const;
};

IndexPage readIndexPage(Bytes page);
/// The whole page. A page without free bytes is the most that fits.
std::array<unsigned char, 4096> indexPageBytes(const IndexPage &page);

std::string rowEntry(const std::string &key, RowPosition row);
std::string nodeEntry(const std::string &lastEntry, std::uint32_t child);
RowPosition rowOf(const std::string &leafEntry);
/// Without the row.
std::string_view keyOf(const std::string &leafEntry);

} // namespace jet
