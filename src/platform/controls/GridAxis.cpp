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

/// Pixels around a text, and where the lines would not fit otherwise.
constexpr int WidePadding = 6;
constexpr int NarrowPadding = 4;
/// Pixels of the line between two cells.
constexpr int GridLine = 1;

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

void GridAxis::setContent(int line, int wanted, int least)
{
    content_.resize(twips_.size());
    Content &content = content_[static_cast<std::size_t>(line)];
    const Content changed{wanted, least};
    stale_ = stale_ || content != changed;
    content = changed;
}

int GridAxis::padding() const
{
    if (stale_) {
        rebuild();
    }
    return padding_;
}

/// Pixels of each line when the sharing ones have at least their text between paddings of this size.
std::vector<int> GridAxis::lengths(int padding, bool wanted) const
{
    std::vector<int> lengths(twips_.size());
    std::transform(twips_.begin(), twips_.end(), lengths.begin(), pixels);
    const auto least = [&](std::size_t line) {
        const Content content = line < content_.size() ? content_[line] : Content();
        return (wanted ? content.wanted : content.least) + 2 * padding + GridLine;
    };
    std::vector<std::size_t> takers;
    for (const int line : stretched_) {
        if (line < count() && !isHidden(line)) {
            const auto taker = static_cast<std::size_t>(line);
            lengths[taker] = std::max(lengths[taker], least(taker));
            takers.push_back(taker);
        }
    }
    int spare = std::accumulate(lengths.begin(), lengths.end(), spreadExtent_, std::minus<>());
    if (spare < 0) {
        // Those that can give least first, so that what they cannot give is taken from the others.
        const auto surplus = [&](std::size_t line) { return lengths[line] - least(line); };
        std::sort(takers.begin(), takers.end(), [&](std::size_t a, std::size_t b) { return surplus(a) < surplus(b); });
    }
    for (std::size_t i = 0; i < takers.size() && spare != 0; ++i) {
        int &length = lengths[takers[i]];
        const int share = std::max(spare / static_cast<int>(takers.size() - i), std::min(0, least(takers[i]) - length));
        length += share;
        spare -= share;
    }
    return lengths;
}

void GridAxis::rebuild() const
{
    const auto fits = [this](const std::vector<int> &lengths) {
        return std::accumulate(lengths.begin(), lengths.end(), 0) <= spreadExtent_;
    };
    padding_ = WidePadding;
    std::vector<int> lengths = this->lengths(padding_, true);
    if (!stretched_.isEmpty() && !fits(lengths)) {
        // First closer to the lines, then with long texts cut; without an extent the least lengths are asked for.
        std::vector<int> narrow = this->lengths(NarrowPadding, true);
        if (!fits(narrow)) {
            narrow = this->lengths(NarrowPadding, false);
        }
        const bool isNarrow = spreadExtent_ == 0 || fits(narrow);
        padding_ = isNarrow ? NarrowPadding : WidePadding;
        lengths = isNarrow ? std::move(narrow) : this->lengths(WidePadding, false);
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

bool GridAxis::isShown(int line, int extent) const
{
    return line < pinned() ? size(line) > 0 && start(line) < extent : isFullyShown(line, extent);
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
        if (isShown(line, extent)) {
            lines.push_back(line);
        }
    }
    for (int index = position(first()); index < positions(); ++index) {
        const int line = lineAt(index);
        if (!isShown(line, extent)) {
            break;
        }
        lines.push_back(line);
    }
    return lines;
}

} // namespace controls
