// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>

#include <algorithm>
#include <optional>
#include <vector>

namespace controls
{

/// The rows or the columns of a grid as lengths: stored twips, drawn pixels, and the first scrolled line shown. Sums are rebuilt
/// on the first query after a change, so filling a grid line by line costs one pass.
class GridAxis
{
public:
    explicit GridAxis(int defaultTwips) : defaultTwips_(defaultTwips) {}

    int count() const { return static_cast<int>(twips_.size()); }
    void setCount(int count);
    /// Never more than count(), but a larger number takes effect when lines are added.
    int fixed() const { return std::min(fixed_, count()); }
    void setFixed(int fixed);
    /// Fixed lines and the frozen ones after them: what does not scroll.
    int pinned() const { return std::min(fixed_ + frozen_, count()); }
    void setFrozen(int frozen);
    int twips(int line) const { return twips_[static_cast<std::size_t>(line)]; }
    void setTwips(int line, int twips);
    bool isHidden(int line) const { return twips(line) == 0; }

    /// Lines that share the spare or missing pixels of `extent`; their stored twips are unchanged.
    void setStretched(const QList<int> &lines);
    const QList<int> &stretched() const { return stretched_; }
    /// Pixels of the text of such a line: what it shows where possible, and what it never goes below.
    void setContent(int line, int wanted, int least);
    /// Pixels between the edges of a line and its text: fewer where nothing would fit otherwise.
    int padding() const;
    void spread(int extent);

    int size(int line) const { return start(line + 1) - start(line); }
    int total() const { return start(count()); }
    int pinnedExtent() const { return start(pinned()); }

    /// First scrolled line shown; for a hidden one the next that shows.
    int first() const;
    void setFirst(int line);
    /// Index of a line among those that show and scroll, from 0; for a hidden line that of the next.
    int position(int line) const;
    /// The line at such an index, clamped to the valid range; the first scrolled line when none shows.
    int lineAt(int position) const;
    int positions() const;
    /// The same among those that show and are not fixed.
    int selectableIndex(int line) const;
    int selectableAt(int index) const;
    int selectableCount() const;
    /// The last position worth scrolling to: from there on everything fits into `extent`.
    int lastPosition(int extent) const;
    /// How many scrolled lines fit, starting from the current first line; at least 1.
    int page(int extent) const;

    /// Distance of a line from the edge of the view; nothing when it is hidden or scrolled out at the near edge.
    std::optional<int> viewStart(int line) const;
    /// Distance of a line from the edge of the view, whether it shows or not; a fixed line and one scrolled out at the near edge
    /// count as the first scrolled one.
    int origin(int line) const;
    bool isFullyShown(int line, int extent) const;
    /// Whether a line is drawn: scrolled lines are drawn whole or not at all.
    bool isShown(int line, int extent) const;
    /// The line under a pixel of the view; nothing beyond the last one.
    std::optional<int> lineAtPixel(int pixel) const;
    /// Lines that show within `extent`, fixed ones first.
    std::vector<int> shownWithin(int extent) const;

private:
    int start(int line) const;
    void rebuild() const;
    std::vector<int> lengths(int padding, bool wanted) const;

    int defaultTwips_;
    int fixed_ = 0;
    int frozen_ = 0;
    int first_ = 0;
    std::vector<int> twips_;
    QList<int> stretched_;
    struct Content {
        int wanted = 0;
        int least = 0;
        bool operator==(const Content &) const = default;
    };
    std::vector<Content> content_;
    int spreadExtent_ = 0;
    mutable bool stale_ = true;
    mutable int padding_ = 0;
    /// Pixels before each line, one more than there are lines; the frozen and the scrolled lines that show.
    mutable std::vector<int> starts_;
    mutable std::vector<int> frozenShown_;
    mutable std::vector<int> scrolled_;
};

} // namespace controls
