// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/lists/ListWriter.h"

namespace lists
{

/// The farm lists while somebody works on them: what is stored, what was written, and the way back.
class ListSession
{
public:
    explicit ListSession(SessionContext &session) : session_(session) {}

    /// Reads all lists again, with what other programs wrote. The way back stays: it is checked against what is stored.
    void reload();
    const FarmLists &lists() const { return lists_; }

    /// Writes all changes or none. On conflicts the lists are read again, so that they show what is stored.
    std::vector<Conflict> write(const std::vector<Change> &changes);

    bool canUndo() const { return !done_.empty(); }
    bool canRedo() const { return !undone_.empty(); }
    /// What undo and redo would write; empty without any.
    std::vector<Change> nextUndo() const;
    std::vector<Change> nextRedo() const;
    /// A step that meets a conflict is dropped: what it began with is gone.
    std::vector<Conflict> undo();
    std::vector<Conflict> redo();

private:
    using Steps = std::vector<std::vector<Change>>;

    std::vector<Conflict> apply(const std::vector<Change> &changes);
    std::vector<Conflict> step(Steps &from, Steps &to, const std::vector<Change> &changes);

    SessionContext &session_;
    FarmLists lists_;
    Steps done_;
    Steps undone_;
};

} // namespace lists
