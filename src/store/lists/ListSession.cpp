// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/ListSession.h"

namespace lists
{

void ListSession::reload()
{
    lists_.read(session_);
}

std::vector<Conflict> ListSession::write(const std::vector<Change> &changes)
{
    if (changes.empty()) {
        return {};
    }
    std::vector<Conflict> conflicts = apply(changes);
    if (conflicts.empty()) {
        done_.push_back(changes);
        undone_.clear();
    }
    return conflicts;
}

std::vector<Conflict> ListSession::apply(const std::vector<Change> &changes)
{
    std::vector<Conflict> conflicts = writeChanges(session_, changes);
    if (!conflicts.empty()) {
        reload();
        return conflicts;
    }
    for (const Change &change : changes) {
        if (change.after) {
            lists_.put(change.list, *change.after);
        } else {
            lists_.remove(change.list, change.key());
        }
    }
    return {};
}

std::vector<Change> ListSession::nextUndo() const
{
    return done_.empty() ? std::vector<Change>() : inverse(done_.back());
}

std::vector<Change> ListSession::nextRedo() const
{
    return undone_.empty() ? std::vector<Change>() : undone_.back();
}

std::vector<Conflict> ListSession::undo()
{
    return step(done_, undone_, nextUndo());
}

std::vector<Conflict> ListSession::redo()
{
    return step(undone_, done_, nextRedo());
}

std::vector<Conflict> ListSession::step(Steps &from, Steps &to, const std::vector<Change> &changes)
{
    if (changes.empty()) {
        return {};
    }
    std::vector<Conflict> conflicts = apply(changes);
    // An error of the database passed through above, and leaves the step to be tried again.
    if (conflicts.empty()) {
        to.push_back(std::move(from.back()));
    }
    from.pop_back();
    return conflicts;
}

} // namespace lists
