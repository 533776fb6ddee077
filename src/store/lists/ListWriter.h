// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/lists/ListPlan.h"

namespace lists
{

/// A change that was not written, and why.
struct Conflict {
    Change change;
    /// A sentence.
    QString reason;
};

/// Writes all changes, or none when one of them cannot be: the row differs from what the change began with since another program
/// wrote it, a new row's key is taken, or a row to delete has a history. Then the conflicts are returned; errors of the databases
/// pass through, with nothing written.
///
/// Each file has a transaction of its own. Should the commit of the second fail, the first is written back; a kill between the
/// two commits leaves the lists of the first file written and the pests as they were.
std::vector<Conflict> writeChanges(SessionContext &session, const std::vector<Change> &changes);

/// The changes that take these back, last first.
std::vector<Change> inverse(const std::vector<Change> &changes);

} // namespace lists
