// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Catalogue.h"
#include "platform/jet/Database.h"
#include "platform/jet/LockFile.h"
#include "platform/jet/RowReader.h"
#include "platform/jet/UsageMapEditor.h"

#include <map>
#include <memory>
#include <vector>

namespace jet
{

/// What Database and Transaction share.
struct DatabaseState {
    DatabaseState(const QString &path, const QString &userPassword);

    /// Runs `body`; its Fault goes on as an Error that names the file and the table.
    template <typename Body> auto naming(const QString &table, Body &&body) const
    {
        try {
            return body();
        } catch (const Fault &fault) {
            failDamaged(table, fault.sentence());
        }
    }
    [[noreturn]] void failDamaged(const QString &table, const QString &sentence) const;

    /// Slots of the users that are marked as writing.
    std::vector<int> writers() const;
    TableDefinition &definition(const QString &table);
    /// Reads the catalogue anew; definitions are read anew when they are asked for.
    void forgetDefinitions();

    QString password;
    Stamp stamp;
    Pager pager;
    RowPages rowPages{pager};
    Catalogue catalogue;
    /// By the page of the definition.
    std::map<std::uint32_t, TableDefinition> definitions;
    PageAllocator allocator{pager};
};

} // namespace jet
