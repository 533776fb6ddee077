// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/JetCopy.h"
#include "platform/dao/JetWriter.h"
#include "platform/dao/Storage.h"
#include "platform/jet/Database.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace dao
{

class MirrorCache;

/// A Jet file as it is, read through a mirror: a private SQLite database in memory that holds its tables, with the indexes of the
/// file and those added through Database::Append. Jet files index little but primary keys, so queries on their pages would scan.
///
/// A row of a table with a single Long primary key has that key as its row number in the mirror, a row of any other table its
/// position in the file. Memo, OLE, binary and numeric columns are not mirrored. A table that cannot be read is left out; using
/// it raises the error of reading it.
class JetStorage : public Storage
{
public:
    /// Exclusively: 3045 when another user is present.
    static std::unique_ptr<JetStorage> open(const QString &path, bool exclusive, bool readOnly, const QString &password);
    /// An empty file. Error 75 when there is one of that name.
    static std::unique_ptr<JetStorage> create(const QString &path, const QString &password);
    static QStringList companionFiles(const QString &path);

    const QString &path() const override { return mirror_.path(); }
    Connection &connection() override { return mirror_; }
    bool isReadOnly() const override { return !whyReadOnly_.isEmpty(); }
    bool isMirror() const override { return true; }

    /// Reads the file again when another program has changed it. A state that cannot be read completely is tried again for two
    /// seconds; then the last good one stays, and Workspace::notice() reports why.
    bool refresh() override;
    void requireReadable(QStringView table) override;

    void beginWrite() override;
    void commitWrite() override;
    void abandonWrite() override;
    /// In the file a new table has its primary and unique indexes; the others are in the mirror alone.
    void createTable(const TableDef &definition) override;
    /// Boolean fields alone: 3027.
    void addField(const TableDef &table, const Field &field) override;

    void copyTo(const QString &path, bool isInTransaction) override;
    std::unique_ptr<FileCopy> startCopy(const QString &copy) override;
    QStringList checkIntegrity(const Progress &progress) override;
    QStringList checkPages() override;

private:
    JetStorage(const QString &path, std::unique_ptr<jet::Database> file);

    /// The mirror of a file that has just been opened: the one of the last time, if the file has not changed since.
    void loadFirst();
    bool loadStored(const MirrorCache &cache);
    /// Brings the mirror to the state of the file. On an error it is as it was before.
    void load();
    void loadTable(const QString &name);
    void makeTable(const TableDef &definition);
    /// Of a mirrored table, as SQL.
    std::vector<QByteArray> mirrorIndexes(const QString &table);
    void copyRows(const jet::TableDefinition &source, const TableDef &target);

    std::unique_ptr<jet::Database> file_;
    QString password_;
    /// Empty for a file that can be written.
    QString whyReadOnly_;
    Connection mirror_;
    /// CREATE statement of each mirrored table, by name.
    std::map<QString, QByteArray> created_;
    /// Errors of the tables that are left out, by name in lower case.
    std::map<QString, DataError> unreadable_;
    bool isLoaded_ = false;
    const std::shared_ptr<JetCommits> commits_ = std::make_shared<JetCommits>();
    /// While a transaction is open.
    std::unique_ptr<JetWriter> writer_;
    /// The last state that could not be read.
    std::optional<jet::Stamp> rejected_;
};

} // namespace dao
