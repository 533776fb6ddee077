// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/lists/FarmLists.h"

#include <memory>

namespace lists
{

/// What refers to a row, so that it cannot be deleted: its history in the pest database, and rows of other lists.
struct Holders {
    struct Kind {
        /// "instruction", with an s for several.
        QString singular;
        int count = 0;
    };
    std::vector<Kind> kinds;

    bool none() const { return kinds.empty(); }
    /// "14 instructions and 2 planted blocks".
    QString text() const;
};

/// Reads what holds a row. Errors of the databases pass through: what cannot be known must not be deleted. A pest database that
/// the session does not have open is opened for reading meanwhile.
class HolderReader
{
public:
    explicit HolderReader(SessionContext &session) : session_(session) {}

    Holders holdersOf(List list, const Record &record);

private:
    dao::Database &database(store::DatabaseFile file);

    SessionContext &session_;
    std::unique_ptr<dao::Database> pest_;
};

} // namespace lists
