// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/IndexKey.h"
#include "platform/jet/IndexPage.h"
#include "platform/jet/Value.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace jet
{

class PageAllocator;

/// One index under change. Its pages are taken apart when they are first met and put back by `flush`. The root stays on its page.
class IndexTree
{
public:
    IndexTree(PageAllocator &allocator, std::uint32_t owner, std::uint32_t rootPage, RowPosition ownedPages);

    /// Makes the page of an index without entries.
    static void format(PageAllocator &allocator, std::uint32_t page, std::uint32_t owner);

    bool hasKey(const KeyBytes &key);
    /// The first row of a key.
    std::optional<RowPosition> find(const KeyBytes &key);
    /// False when another row has the same key.
    bool insert(const KeyBytes &key, RowPosition row);
    /// False when no other row has the same key. A Fault when there is no such entry.
    bool remove(const KeyBytes &key, RowPosition row);
    /// Puts the changed pages back.
    void flush();

private:
    struct Node : IndexPage {
        bool isChanged = false;
    };
    /// A page on the way down, and which of its children comes next.
    struct Step {
        std::uint32_t page = 0;
        std::size_t child = 0;
    };
    using Path = std::vector<Step>;

    Node &node(std::uint32_t page);
    Node &changed(std::uint32_t page);
    std::uint32_t makePage(bool isLeaf);

    /// The leaf where an entry is or would be, last in the path.
    Path pathTo(const std::string &entry);
    bool neighbourHasKey(const Node &leaf, std::size_t position, std::string_view key);
    std::string lastBelow(std::uint32_t page);

    /// After a change of what a page ends with, the entries above it follow.
    void updateAbove(const Path &path, std::size_t level);
    void splitWhereTooFull(Path path);
    void nestRoot(Path &path);
    void split(Path &path, std::size_t level);
    void linkBefore(std::uint32_t page, std::uint32_t before);
    void unlinkAcrossParents(std::uint32_t lastOfFirst, std::uint32_t firstOfSecond);
    void removeEmpty(const Path &path);
    /// The last child of a node with several is its tail, an only child is not.
    void normalizeTail(std::uint32_t page);

    PageAllocator &allocator_;
    std::uint32_t owner_;
    std::uint32_t root_;
    RowPosition ownedMap_;
    std::map<std::uint32_t, Node> nodes_;
};

} // namespace jet
