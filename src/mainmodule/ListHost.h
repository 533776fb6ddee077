// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/lists/ListSession.h"

namespace basic
{
class RunTimeError;
}
namespace controls
{
class Dialogs;
}

namespace mainmodule
{

/// The main window as its pages see it.
class ListHost
{
public:
    virtual ~ListHost() = default;
    virtual SessionContext &session() = 0;
    virtual const lists::FarmLists &farmLists() const = 0;
    virtual controls::Dialogs &dialogs() = 0;
    /// Key of the farm chosen at the top; 0 for none.
    virtual std::int32_t farm() const = 0;

    /// Writes all changes or none, and says `done` in the status line. What another program changed meanwhile comes back as
    /// conflicts, and the lists are then those that are stored. An error of the database is in the status line.
    struct Written {
        bool done = false;
        std::vector<lists::Conflict> conflicts;
    };
    virtual Written write(const std::vector<lists::Change> &changes, const QString &done) = 0;

    virtual void showStatus(const QString &text) = 0;
    virtual void showFailure(const QString &text) = 0;
    virtual void showNote(const QString &text) = 0;
    virtual void showError(const basic::RunTimeError &error) = 0;
};

} // namespace mainmodule
