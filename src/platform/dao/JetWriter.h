// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/MirrorChanges.h"
#include "platform/dao/TableDef.h"
#include "platform/jet/Transaction.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace dao
{

/// One transaction of a Jet file: records what changes in its mirror and writes it to the file. While it lives nobody else can
/// write the file. Errors are those of the file and of the mirror.
class JetWriter
{
public:
    JetWriter(jet::Database &file, Connection &mirror);

    /// The row number of a row in a mirrored table without a key.
    static std::int64_t rowNumber(jet::RowPosition position);
    /// Whether the rows of a mirrored table have its primary key for a number.
    static bool hasKeyRows(const TableDef &table);

    void createTable(const TableDef &definition);
    void addBooleanColumn(const QString &table, const QString &column);
    /// Writes what has changed; durable when it returns. New rows without a key get their row number in the mirror. Returns the
    /// numbers of the pages that were written.
    std::vector<std::uint32_t> commit();

private:
    struct MovedRow {
        std::int64_t from;
        std::int64_t to;
    };

    void writeTable(const QString &name, const std::vector<MirrorChanges::Row> &rows);
    jet::RowPosition positionOf(const jet::TableDefinition &table, bool hasKeys, std::int64_t row);
    void renumber(const QString &table, const std::vector<MovedRow> &rows);

    jet::Database &file_;
    Connection &mirror_;
    jet::Transaction transaction_;
    MirrorChanges changes_;
};

} // namespace dao
