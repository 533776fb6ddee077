// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/SessionContext.h"
#include "store/lists/ListTables.h"

#include <QHash>
#include <QString>

#include <cstdint>
#include <vector>

namespace lists
{

/// The stored form of every column of a row; see ColumnKind.
using Cells = std::vector<QString>;

struct Record {
    /// Of a list without keys, a number of this program's own.
    std::int32_t key = 0;
    Cells cells;

    const QString &cell(int column) const { return cells[static_cast<std::size_t>(column)]; }
    void set(int column, const QString &value) { cells[static_cast<std::size_t>(column)] = value; }
    bool operator==(const Record &) const = default;
};

/// A new row of a list with the values that it begins with: active, and with the usual number of points.
Record newRecord(List list);

/// The rows of all farm lists in memory, as they were when they were read, with the changes that were put in since. Knows names
/// and keys of all lists; a copy is cheap enough to try changes on.
class FarmLists
{
public:
    /// Reads all lists. A list that cannot be read is empty, and failure() has the reason.
    void read(SessionContext &session);

    /// In the order of their keys.
    const std::vector<Record> &records(List list) const { return tables_[indexOf(list)].records; }
    const QString &failure(List list) const { return tables_[indexOf(list)].failure; }
    /// The file was opened for reading only, or has no right to be written.
    bool isReadOnly(List list) const { return tables_[indexOf(list)].readOnly; }
    /// nullptr when there is none.
    const Record *find(List list, std::int32_t key) const;
    /// The largest key that was ever used.
    std::int32_t lastKey(List list) const;

    /// Adds a row, or replaces the one with its key.
    void put(List list, const Record &record);
    void remove(List list, std::int32_t key);

    /// What people read in a cell: names for keys, words for kinds and answers.
    QString shown(List list, const Record &record, int column) const;
    /// A row's name, with the names of the rows that it belongs to where that is needed to tell it from others: "Dam",
    /// "Riverbend / Dam", "Dam #12".
    QString reference(List list, std::int32_t key) const;
    const QString &name(List list, const Record &record) const { return record.cell(tableOf(list).nameColumn); }
    /// Rows of that name, without regard to case.
    QList<std::int32_t> named(List list, const QString &name) const;
    /// Rows that a text refers to: a name, the names of owners and the name with " / " between them, or "#" and the key.
    QList<std::int32_t> referredTo(List list, const QString &text) const;
    /// The key of the row that a Reference or Parent column leads to; 0 for none.
    std::int32_t target(List list, const Record &record, int column) const;

    /// Most characters of a text column; or what other tables take before anything was read.
    int size(List list, int column) const;
    /// Whether the list's file holds the names of a column as whole numbers.
    bool isNumeric(List list, int column) const;

private:
    struct StoredTable {
        std::vector<Record> records;
        /// Positions in `records` by key, keys by folded name.
        QHash<std::int32_t, std::size_t> positions;
        QMultiHash<QString, std::int32_t> names;
        std::vector<int> sizes;
        std::vector<bool> numeric;
        std::int32_t lastKey = 0;
        bool readOnly = false;
        QString failure;
    };

    void readTable(SessionContext &session, const Table &table);
    void readLastKeys(dao::Database &database);
    void index(const Table &table);
    QString path(List list, std::int32_t key) const;

    std::array<StoredTable, AllLists.size()> tables_;
};

/// The handle of the file that holds a list.
dao::DatabaseHandle &handleFor(SessionContext &session, const Table &table);

} // namespace lists
