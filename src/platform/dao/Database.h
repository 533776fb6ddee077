// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/DataError.h"
#include "platform/dao/FileCopy.h"
#include "platform/dao/Recordset.h"
#include "platform/dao/TableDef.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace dao
{

/// An open database file.
///
/// SQL is taken in the dialect that the screens write: names without regard to case, bare or in [brackets]; #mm/dd/yyyy# dates;
/// True and False; table!field or table.field; Datepart('yyyy', field); joins by comma or INNER JOIN, in round brackets or not;
/// nested IN (Select ...); text in single quotes, where two quotes mean one. Literals become bound
/// parameters, so a statement is parsed once per shape. A name that is no field raises 3061, an unknown table 3078, text that
/// cannot be read 3075.
///
/// Text compares and sorts without regard to case and accents; apostrophes and hyphens only break ties.
/// A write raises 3022 for a key that exists already, 3027 in a file opened for reading, 3260 when another program
/// has been writing for two seconds, 3026 on a full disk and 3043 when the disk fails; reading raises 3049 on a damaged page.
/// Closing happens with the object. Not for use from several threads.
class Database
{
public:
    struct State;
    explicit Database(std::unique_ptr<State> state);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    /// Full path of the file.
    const QString &Name() const;
    bool isReadOnly() const;
    /// Whether the file is read through a mirror, which has only the indexes of the file.
    bool isMirrored() const;

    Recordset OpenRecordset(const QString &sql, RecordsetType type = RecordsetType::Snapshot);
    /// Runs an UPDATE, INSERT or DELETE statement; returns the number of rows that it touched.
    int Execute(const QString &sql);

    /// A definition to fill and to Append.
    TableDef CreateTableDef(const QString &name) const { return TableDef(name); }
    /// Puts the table in the file: 3010 when there is one of that name.
    void Append(const TableDef &definition);
    /// Adds a field to a table in the file; existing rows hold null in it, a Boolean False. 3191 when the table has one of that
    /// name.
    void Append(const QString &table, const Field &field);
    /// Builds an index over the rows of a table in the file; its name is that of tableDef's indexes. Of a Jet file only the
    /// mirror has it.
    void Append(const QString &table, const Index &index);
    /// 3265 when the table has no index of that name, or when it is the key.
    void removeIndex(const QString &table, const QString &index);
    /// By name without regard to case; 3265 when there is none.
    TableDef tableDef(const QString &name) const;
    QStringList tableNames() const;

    /// Copies the whole database, as of one moment, to a file that must not exist: 75. Written under another name and renamed.
    void backupTo(const QString &path) const;
    /// A copy to the empty file `path`, made in steps on another thread while the database is in use.
    std::unique_ptr<FileCopy> startCopy(const QString &path) const;
    /// Reads the whole file and returns what is wrong with it; empty when nothing is.
    QStringList checkIntegrity(const std::function<void(int percent)> &progress = {}) const;
    /// The same without comparing rows with their indexes: about a second for two million rows, a tenth of the whole check.
    QStringList checkPages() const;
    /// Stored values of a table that its fields cannot hold, one sentence each.
    QStringList mismatches(const QString &table) const;

    /// The state, for CommitScope and the recordsets.
    State &state() { return *state_; }

private:
    std::unique_ptr<State> state_;
};

} // namespace dao
