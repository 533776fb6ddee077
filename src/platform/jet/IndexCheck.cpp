// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/IndexCheck.h"

#include "platform/jet/IndexPage.h"
#include "platform/jet/Pager.h"
#include "platform/jet/TableDefinition.h"

#include <algorithm>
#include <set>

namespace jet
{

namespace
{

/// Far above what any file needs.
constexpr std::size_t MostLevels = 16;

class Walk
{
public:
    Walk(const Pager &pager, const TableDefinition &table, const std::function<void(const QString &)> &report)
        : pager_(pager), table_(table), report_(report)
    {
    }

    /// Returns the last entry below the page, empty when there is none.
    std::string below(std::uint32_t number, std::size_t depth, bool isRoot)
    {
        walk.pages.push_back(number);
        if (depth > MostLevels) {
            throw Fault(QStringLiteral("the index has more than %1 levels").arg(MostLevels));
        }
        if (!seen_.insert(number).second) {
            throw Fault(QStringLiteral("page %1 of the index is reached twice").arg(number));
        }
        const IndexPage page = locating(number, std::nullopt, [&] { return readIndexPage(pager_.page(number)); });
        if (page.owner != table_.page) {
            report_(QStringLiteral("page %1 of the index names page %2 its owner").arg(number).arg(page.owner));
        }
        for (std::size_t i = 1; i < page.entries.size(); ++i) {
            if (page.entries[i - 1] >= page.entries[i]) {
                report_(QStringLiteral("page %1 of the index: entry %2 is out of order").arg(number).arg(i + 1));
            }
        }
        return page.isLeaf ? leaf(number, page, depth, isRoot) : node(number, page, depth);
    }

    IndexWalk walk;

private:
    std::string leaf(std::uint32_t number, const IndexPage &page, std::size_t depth, bool isRoot)
    {
        if (leafDepth_ == 0) {
            leafDepth_ = depth;
        }
        if (depth != leafDepth_) {
            report_(QStringLiteral("page %1 of the index is a leaf at level %2, others at level %3")
                        .arg(number)
                        .arg(depth)
                        .arg(leafDepth_));
        }
        if (page.previous != previousLeaf_ || (previousLeaf_ != 0 && nextOfPrevious_ != number)) {
            report_(QStringLiteral("page %1 of the index is not linked to the page before it").arg(number));
        }
        previousLeaf_ = number;
        nextOfPrevious_ = page.next;
        if (page.entries.empty() && !isRoot) {
            report_(QStringLiteral("page %1 of the index is empty").arg(number));
        }
        for (const std::string &entry : page.entries) {
            if (!walk.entries.empty() && walk.entries.back() >= entry) {
                report_(QStringLiteral("page %1 of the index begins before the page before it ends").arg(number));
            }
            if (walk.entries.empty() || keyOf(walk.entries.back()) != keyOf(entry)) {
                ++walk.distinctKeys;
            }
            walk.entries.push_back(entry);
        }
        return page.entries.empty() ? std::string() : page.entries.back();
    }

    std::string node(std::uint32_t number, const IndexPage &page, std::size_t depth)
    {
        if (page.childCount() == 0) {
            throw Fault(QStringLiteral("page %1 of the index has no children").arg(number));
        }
        std::string last;
        for (std::size_t i = 0; i < page.childCount(); ++i) {
            last = below(page.child(i), depth + 1, false);
            if (i < page.entries.size() && page.entries[i] != nodeEntry(last, page.child(i))) {
                report_(QStringLiteral("page %1 of the index: entry %2 is not the last below page %3")
                            .arg(number)
                            .arg(i + 1)
                            .arg(page.child(i)));
            }
        }
        return last;
    }

    const Pager &pager_;
    const TableDefinition &table_;
    const std::function<void(const QString &)> &report_;
    std::set<std::uint32_t> seen_;
    std::size_t leafDepth_ = 0;
    std::uint32_t previousLeaf_ = 0;
    std::uint32_t nextOfPrevious_ = 0;

public:
    bool endsOpen() const { return nextOfPrevious_ != 0; }
};

} // namespace

IndexWalk walkIndex(const Pager &pager, const TableDefinition &table, const IndexDefinition &index,
                    const std::function<void(const QString &)> &report)
{
    Walk walk(pager, table, report);
    walk.below(index.rootPage, 1, true);
    if (walk.endsOpen()) {
        report(QStringLiteral("the last page of the index names a next one"));
    }
    return std::move(walk.walk);
}

} // namespace jet
