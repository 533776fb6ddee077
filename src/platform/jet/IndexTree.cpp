// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/IndexTree.h"

#include "platform/jet/Pager.h"
#include "platform/jet/UsageMapEditor.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace jet
{

namespace
{

/// Far above what any file needs; a circle ends here.
constexpr std::size_t MostLevels = 16;

std::string_view withoutChild(const std::string &entry)
{
    return std::string_view(entry).substr(0, entry.size() - IndexPage::ChildBytes);
}

/// How many entries a page gives away: half of the bytes, or where the index grows at its end all but the last.
std::size_t splitPosition(const IndexPage &page)
{
    if (page.entries.size() < 2) {
        throw Fault(QStringLiteral("an index key is too long"));
    }
    if (page.isLeaf && page.next == 0) {
        IndexPage head;
        head.entries.assign(page.entries.begin(), page.entries.end() - 1);
        if (head.fits()) {
            return page.entries.size() - 1;
        }
    }
    const auto add = [](std::size_t sum, const std::string &entry) { return sum + entry.size(); };
    const std::size_t half = std::accumulate(page.entries.begin(), page.entries.end(), std::size_t{0}, add) / 2;
    std::size_t position = 0;
    for (std::size_t size = 0; size < half; ++position) {
        size += page.entries[position].size();
    }
    return std::clamp(position, std::size_t{1}, page.entries.size() - 1);
}

} // namespace

IndexTree::IndexTree(PageAllocator &allocator, std::uint32_t owner, std::uint32_t rootPage, RowPosition ownedPages)
    : allocator_(allocator), owner_(owner), root_(rootPage), ownedMap_(ownedPages)
{
}

void IndexTree::format(PageAllocator &allocator, std::uint32_t page, std::uint32_t owner)
{
    IndexPage empty;
    empty.owner = owner;
    const auto bytes = indexPageBytes(empty);
    std::copy(bytes.begin(), bytes.end(), allocator.pager().edit(page));
}

IndexTree::Node &IndexTree::node(std::uint32_t page)
{
    const auto known = nodes_.find(page);
    if (known != nodes_.end()) {
        return known->second;
    }
    Node found;
    static_cast<IndexPage &>(found) = locating(page, std::nullopt, [&] { return readIndexPage(allocator_.pager().page(page)); });
    if (found.owner != owner_) {
        throw Fault(QStringLiteral("page %1 of the index belongs to the definition on page %2").arg(page).arg(found.owner));
    }
    return nodes_.emplace(page, std::move(found)).first->second;
}

IndexTree::Node &IndexTree::changed(std::uint32_t page)
{
    Node &found = node(page);
    found.isChanged = true;
    return found;
}

std::uint32_t IndexTree::makePage(bool isLeaf)
{
    const std::uint32_t page = allocator_.allocate();
    addToMap(allocator_, ownedMap_, page);
    Node made;
    made.isLeaf = isLeaf;
    made.owner = owner_;
    made.isChanged = true;
    nodes_.insert_or_assign(page, std::move(made));
    return page;
}

IndexTree::Path IndexTree::pathTo(const std::string &entry)
{
    Path path{{root_, 0}};
    while (!node(path.back().page).isLeaf) {
        const Node &parent = node(path.back().page);
        if (path.size() == MostLevels || parent.childCount() == 0) {
            throw Fault(QStringLiteral("the index on page %1 leads nowhere").arg(root_));
        }
        const auto above =
            std::lower_bound(parent.entries.begin(), parent.entries.end(), std::string_view(entry),
                             [](const std::string &one, std::string_view other) { return withoutChild(one) < other; });
        const auto child = std::min(static_cast<std::size_t>(above - parent.entries.begin()), parent.childCount() - 1);
        path.back().child = child;
        path.push_back({parent.child(child), 0});
    }
    return path;
}

std::optional<RowPosition> IndexTree::find(const KeyBytes &key)
{
    const Path path = pathTo(key);
    const Node *leaf = &node(path.back().page);
    auto found = std::lower_bound(leaf->entries.begin(), leaf->entries.end(), key);
    // The entry behind the end of one leaf is the first of the next.
    if (found == leaf->entries.end() && leaf->next != 0) {
        leaf = &node(leaf->next);
        found = leaf->entries.begin();
    }
    if (found == leaf->entries.end() || keyOf(*found) != key) {
        return std::nullopt;
    }
    return rowOf(*found);
}

bool IndexTree::hasKey(const KeyBytes &key)
{
    return find(key).has_value();
}

bool IndexTree::neighbourHasKey(const Node &leaf, std::size_t position, std::string_view key)
{
    const auto has = [&](const std::string *entry) { return entry && keyOf(*entry) == key; };
    const auto entryOf = [&](std::uint32_t page, bool isLast) -> const std::string * {
        if (page == 0 || node(page).entries.empty()) {
            return nullptr;
        }
        return isLast ? &node(page).entries.back() : &node(page).entries.front();
    };
    const bool isLast = position + 1 == leaf.entries.size();
    return has(position > 0 ? &leaf.entries[position - 1] : entryOf(leaf.previous, true))
        || has(isLast ? entryOf(leaf.next, false) : &leaf.entries[position + 1]);
}

bool IndexTree::insert(const KeyBytes &key, RowPosition row)
{
    const std::string entry = rowEntry(key, row);
    const Path path = pathTo(entry);
    Node &leaf = changed(path.back().page);
    const auto at = std::lower_bound(leaf.entries.begin(), leaf.entries.end(), entry);
    if (at != leaf.entries.end() && *at == entry) {
        throw Fault(QStringLiteral("an index already leads to page %1, row %2").arg(row.page).arg(row.slot + 1));
    }
    const auto position = static_cast<std::size_t>(at - leaf.entries.begin());
    leaf.entries.insert(at, entry);
    const bool isFirstOfKey = !neighbourHasKey(leaf, position, key);
    if (position + 1 == leaf.entries.size()) {
        updateAbove(path, path.size() - 1);
    }
    splitWhereTooFull(path);
    return isFirstOfKey;
}

bool IndexTree::remove(const KeyBytes &key, RowPosition row)
{
    const std::string entry = rowEntry(key, row);
    const Path path = pathTo(entry);
    Node &leaf = changed(path.back().page);
    const auto at = std::lower_bound(leaf.entries.begin(), leaf.entries.end(), entry);
    if (at == leaf.entries.end() || *at != entry) {
        throw Fault(QStringLiteral("an index has no entry for page %1, row %2").arg(row.page).arg(row.slot + 1));
    }
    const auto position = static_cast<std::size_t>(at - leaf.entries.begin());
    const bool wasLastOfKey = !neighbourHasKey(leaf, position, key);
    const bool wasAtEnd = position + 1 == leaf.entries.size();
    leaf.entries.erase(at);
    if (leaf.entries.empty()) {
        removeEmpty(path);
    } else if (wasAtEnd) {
        updateAbove(path, path.size() - 1);
        splitWhereTooFull(path);
    }
    return wasLastOfKey;
}

std::string IndexTree::lastBelow(std::uint32_t page)
{
    const Node *found = &node(page);
    for (std::size_t level = 0; !found->isLeaf; ++level) {
        if (level == MostLevels || found->childCount() == 0) {
            throw Fault(QStringLiteral("the index below page %1 leads nowhere").arg(page));
        }
        found = &node(found->child(found->childCount() - 1));
    }
    return found->entries.empty() ? std::string() : found->entries.back();
}

void IndexTree::updateAbove(const Path &path, std::size_t level)
{
    const std::string last = lastBelow(path[level].page);
    while (level-- > 0) {
        const Step &step = path[level];
        if (step.child < node(step.page).entries.size()) {
            changed(step.page).entries[step.child] = nodeEntry(last, path[level + 1].page);
        }
        if (step.child + 1 < node(step.page).childCount()) {
            return;
        }
    }
}

void IndexTree::splitWhereTooFull(Path path)
{
    for (std::size_t level = path.size(); level-- > 0;) {
        if (node(path[level].page).fits()) {
            continue;
        }
        if (level == 0) {
            nestRoot(path);
            level = 1;
        }
        split(path, level);
        normalizeTail(path[level - 1].page);
    }
}

void IndexTree::nestRoot(Path &path)
{
    Node &root = changed(root_);
    const std::uint32_t below = makePage(root.isLeaf);
    Node &nested = node(below);
    nested.entries = std::move(root.entries);
    nested.tail = std::exchange(root.tail, 0);
    root.isLeaf = false;
    root.entries = {nodeEntry(lastBelow(below), below)};
    path.insert(path.begin(), Step{root_, 0});
    path[1].page = below;
}

/// The first part of the page goes to a new one before it, so that tail links stay as they are.
void IndexTree::split(Path &path, std::size_t level)
{
    const std::uint32_t page = path[level].page;
    const bool isLeaf = node(page).isLeaf;
    const std::uint32_t made = makePage(isLeaf);
    Node &rest = changed(page);
    Node &head = node(made);
    const auto middle = rest.entries.begin() + static_cast<std::ptrdiff_t>(splitPosition(rest));
    head.entries.assign(std::make_move_iterator(rest.entries.begin()), std::make_move_iterator(middle));
    rest.entries.erase(rest.entries.begin(), middle);
    linkBefore(made, page);
    if (!isLeaf) {
        unlinkAcrossParents(head.child(head.childCount() - 1), rest.child(0));
        normalizeTail(made);
    }
    const Step &above = path[level - 1];
    Node &parent = changed(above.page);
    parent.entries.insert(parent.entries.begin() + static_cast<std::ptrdiff_t>(above.child), nodeEntry(lastBelow(made), made));
}

void IndexTree::linkBefore(std::uint32_t made, std::uint32_t page)
{
    Node &next = changed(page);
    Node &between = changed(made);
    between.next = page;
    between.previous = next.previous;
    if (next.previous != 0) {
        changed(next.previous).next = made;
    }
    next.previous = made;
}

void IndexTree::unlinkAcrossParents(std::uint32_t lastOfFirst, std::uint32_t firstOfSecond)
{
    // Leaves are linked from the first to the last, nodes below one parent alone.
    if (node(lastOfFirst).isLeaf) {
        return;
    }
    changed(lastOfFirst).next = 0;
    changed(firstOfSecond).previous = 0;
}

void IndexTree::removeEmpty(const Path &path)
{
    std::size_t level = path.size() - 1;
    for (; level > 0 && node(path[level].page).childCount() == 0; --level) {
        const std::uint32_t page = path[level].page;
        const std::uint32_t previous = node(page).previous;
        const std::uint32_t next = node(page).next;
        if (previous != 0) {
            changed(previous).next = next;
        }
        if (next != 0) {
            changed(next).previous = previous;
        }
        Node &parent = changed(path[level - 1].page);
        const std::size_t child = path[level - 1].child;
        if (child < parent.entries.size()) {
            parent.entries.erase(parent.entries.begin() + static_cast<std::ptrdiff_t>(child));
        } else {
            parent.tail = 0;
        }
        nodes_.erase(page);
        removeFromMap(allocator_, ownedMap_, page);
        allocator_.release(page);
    }
    if (node(path[level].page).childCount() == 0) {
        changed(path[level].page).isLeaf = true;
        return;
    }
    normalizeTail(path[level].page);
    // When the last child went, the page now ends with another entry.
    if (level > 0) {
        updateAbove(path, level);
    }
    splitWhereTooFull(Path(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(level) + 1));
}

void IndexTree::normalizeTail(std::uint32_t page)
{
    Node &parent = changed(page);
    if (parent.tail == 0 && parent.entries.size() > 1) {
        parent.tail = parent.child(parent.entries.size() - 1);
        parent.entries.pop_back();
    } else if (parent.tail != 0 && parent.entries.empty()) {
        parent.entries.push_back(nodeEntry(lastBelow(parent.tail), parent.tail));
        parent.tail = 0;
    }
}

void IndexTree::flush()
{
    for (auto &[page, changedNode] : nodes_) {
        if (changedNode.isChanged) {
            const auto bytes = indexPageBytes(changedNode);
            std::copy(bytes.begin(), bytes.end(), allocator_.pager().edit(page));
            changedNode.isChanged = false;
        }
    }
}

} // namespace jet
