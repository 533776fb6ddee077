// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/CaptureCells.h"

#include <optional>
#include <vector>

namespace pestmon
{

/// A stored change of one cell and of its column's total. For a typed total the cell is the total.
struct CaptureChange {
    int row;
    int col;
    capture::CellDisplay before;
    capture::CellDisplay after;
    capture::CellDisplay totalBefore;
    capture::CellDisplay totalAfter;

    /// The change back.
    CaptureChange reversed() const { return {row, col, after, before, totalAfter, totalBefore}; }
};

/// The changes since a block was opened, for undo and redo.
class CaptureHistory
{
public:
    /// Drops the changes that could be redone.
    void add(const CaptureChange &change);
    void clear();
    /// The last change not yet undone, and the last one undone; nothing without one.
    std::optional<CaptureChange> undoable() const;
    std::optional<CaptureChange> redoable() const;
    /// Call after the change was undone or redone.
    void undone() { --applied_; }
    void redone() { ++applied_; }

private:
    std::vector<CaptureChange> changes_;
    std::size_t applied_ = 0;
};

} // namespace pestmon
