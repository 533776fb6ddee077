// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/GridAxis.h"

#include "platform/controls/Twips.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace controls
{

namespace
{

/// Pixels below which a column that shares the width is not narrowed: the first, which names the row, and the others.
constexpr int MinFirst = 104;
constexpr int MinStretched = 80;

int pixels(int twips)
{
    return twips == 0 ? 0 : std::max(1, (twips + TwipsPerPixel / 2) / TwipsPerPixel);
}

} // namespace

void GridAxis::setCount(int count)
{
    twips_.resize(static_cast<std::size_t>(count), defaultTwips_);
    stale_ = true;
}

void GridAxis::setFixed(int fixed)
{
    fixed_ = fixed;
    stale_ = true;
}

void GridAxis::setFrozen(int frozen)
{
    frozen_ = frozen;
    stale_ = true;
}

void GridAxis::setTwips(int line, int twips)
{
    twips_[static_cast<std::size_t>(line)] = twips;
    stale_ = true;
}

void GridAxis::setStretched(const QList<int> &lines)
{
    stretched_ = lines;
    stale_ = true;
}

void GridAxis::spread(int extent)
{
    if (!stretched_.isEmpty() && extent != spreadExtent_) {
        stale_ = true;
    }
    spreadExtent_ = extent;
}

void GridAxis::rebuild() const
{
    std::vector<int> lengths(twips_.size());
    std::transform(twips_.begin(), twips_.end(), lengths.begin(), pixels);

    std::vector<std::size_t> takers;
    for (const int line : stretched_) {
        if (line < count() && !isHidden(line)) {
            takers.push_back(static_cast<std::size_t>(line));
        }
    }
    const auto least = [this](std::size_t line) {
        return static_cast<int>(line) == stretched_.front() ? MinFirst : MinStretched;
    };
    int spare = std::accumulate(lengths.begin(), lengths.end(), spreadExtent_, std::minus<>());
    if (spare < 0) {
        std::erase_if(takers, [&](std::size_t line) { return lengths[line] <= least(line); });
        // The shortest first, so that what it cannot give is taken from the longer ones.
        std::sort(takers.begin(), takers.end(), [&lengths](std::size_t a, std::size_t b) { return lengths[a] < lengths[b]; });
    }
    for (std::size_t i = 0; i < takers.size() && spare != 0; ++i) {
        int &length = lengths[takers[i]];
        const int share = std::max(spare / static_cast<int>(takers.size() - i), std::min(0, least(takers[i]) - length));
        length += share;
        spare -= share;
    }

    starts_.assign(1, 0);
    starts_.reserve(lengths.size() + 1);
    frozenShown_.clear();
    scrolled_.clear();
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        starts_.push_back(starts_.back() + lengths[i]);
        if (const int line = static_cast<int>(i); lengths[i] > 0 && line >= fixed_) {
            (line < pinned() ? frozenShown_ : scrolled_).push_back(line);
        }
    }
    stale_ = false;
}

int GridAxis::start(int line) const
{
    if (stale_) {
        rebuild();
    }
    return starts_[static_cast<std::size_t>(line)];
}

int GridAxis::positions() const
{
    if (stale_) {
        rebuild();
    }
    return static_cast<int>(scrolled_.size());
}

int GridAxis::position(int line) const
{
    if (positions() == 0) {
        return 0;
    }
    const auto found = std::lower_bound(scrolled_.begin(), scrolled_.end(), line);
    return std::min(static_cast<int>(found - scrolled_.begin()), positions() - 1);
}

int GridAxis::lineAt(int position) const
{
    if (positions() == 0) {
        return pinned();
    }
    return scrolled_[static_cast<std::size_t>(std::clamp(position, 0, positions() - 1))];
}

int GridAxis::selectableCount() const
{
    return positions() + static_cast<int>(frozenShown_.size());
}

int GridAxis::selectableIndex(int line) const
{
    const int scrolledBegin = selectableCount() - positions();
    const auto frozen = std::lower_bound(frozenShown_.begin(), frozenShown_.end(), line);
    return frozen == frozenShown_.end() ? scrolledBegin + position(line) : static_cast<int>(frozen - frozenShown_.begin());
}

int GridAxis::selectableAt(int index) const
{
    const int scrolledBegin = selectableCount() - positions();
    const int valid = std::max(0, index);
    return valid < scrolledBegin ? frozenShown_[static_cast<std::size_t>(valid)] : lineAt(valid - scrolledBegin);
}

int GridAxis::first() const
{
    return lineAt(position(std::max(first_, pinned())));
}

void GridAxis::setFirst(int line)
{
    first_ = line;
}

int GridAxis::lastPosition(int extent) const
{
    if (positions() == 0) {
        return 0;
    }
    const int available = extent - pinnedExtent();
    const auto overflows = [this, available](int line) { return total() - start(line) > available; };
    const auto found = std::partition_point(scrolled_.begin(), scrolled_.end(), overflows);
    return std::min(static_cast<int>(found - scrolled_.begin()), positions() - 1);
}

int GridAxis::page(int extent) const
{
    const int end = start(first() < count() ? first() : count()) + extent - pinnedExtent();
    const auto fits = [this, end](int line) { return start(line + 1) <= end; };
    const auto found = std::partition_point(scrolled_.begin(), scrolled_.end(), fits);
    return std::max(1, static_cast<int>(found - scrolled_.begin()) - position(first()));
}

std::optional<int> GridAxis::viewStart(int line) const
{
    if (size(line) == 0) {
        return std::nullopt;
    }
    if (line < pinned()) {
        return start(line);
    }
    if (line < first()) {
        return std::nullopt;
    }
    return pinnedExtent() + start(line) - start(first());
}

int GridAxis::origin(int line) const
{
    if (line >= fixed() && line < pinned()) {
        return start(line);
    }
    return pinnedExtent() + std::max(0, start(line) - start(first()));
}

bool GridAxis::isFullyShown(int line, int extent) const
{
    const auto begin = viewStart(line);
    return begin && (*begin + size(line) <= extent || line == first());
}

std::optional<int> GridAxis::lineAtPixel(int pixel) const
{
    if (pixel < 0 || count() == 0) {
        return std::nullopt;
    }
    const bool scrolls = pixel >= pinnedExtent();
    if (scrolls && positions() == 0) {
        return std::nullopt;
    }
    const int target = scrolls ? pixel - pinnedExtent() + start(first()) : pixel;
    if (target >= total()) {
        return std::nullopt;
    }
    // A hidden line starts where the next one starts; the last of equal starts is the one that shows.
    const auto after = std::upper_bound(starts_.begin(), starts_.end(), target);
    return static_cast<int>(after - starts_.begin()) - 1;
}

std::vector<int> GridAxis::shownWithin(int extent) const
{
    std::vector<int> lines;
    for (int line = 0; line < pinned(); ++line) {
        if (size(line) > 0 && start(line) < extent) {
            lines.push_back(line);
        }
    }
    for (int index = position(first()); index < positions(); ++index) {
        const int line = lineAt(index);
        if (*viewStart(line) >= extent) {
            break;
        }
        lines.push_back(line);
    }
    return lines;
}

} // namespace controls
