// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/ListWriter.h"

#include "platform/dao/CommitScope.h"
#include "store/SqlText.h"
#include "store/lists/ListHolders.h"
#include "store/lists/ListRows.h"

#include <algorithm>
#include <memory>

namespace lists
{

using store::sqlText;

namespace
{

QString quoted(const QString &text)
{
    return QStringLiteral("\"%1\"").arg(text);
}

QString nameOf(const Change &change)
{
    const Record &record = change.before ? *change.before : *change.after;
    const Table &table = tableOf(change.list);
    return QStringLiteral("%1 %2").arg(table.singular, quoted(record.cell(table.nameColumn)));
}

/// The changes of one list while they are written. A row is written only when it is what the change began with.
class TableWriter
{
public:
    TableWriter(dao::Database &database, const Table &table, const std::vector<const Change *> &changes)
        : database_(database), table_(table), changes_(changes)
    {
    }

    void write(std::vector<Conflict> &conflicts)
    {
        addInactiveNameField();
        const auto [first, last] = std::minmax_element(
            changes_.begin(), changes_.end(), [](const Change *one, const Change *other) { return one->key() < other->key(); });
        dao::Recordset rows =
            database_.OpenRecordset(rowsBetween(table_, (*first)->key(), (*last)->key()), dao::RecordsetType::Dynaset);
        const ListRows codec(table_, database_.tableDef(table_.table), rows);
        if (table_.list == List::Pests) {
            cropTypes_ = readPestCropTypes(database_, (*first)->key(), (*last)->key());
        }
        for (const Change *change : changes_) {
            waiting_.insert(change->key(), change);
        }
        for (; !rows.Eof(); rows.MoveNext()) {
            writeRow(rows, codec);
        }
        addRows(rows, codec, conflicts);
    }

private:
    void addInactiveNameField()
    {
        const bool isNeeded =
            table_.list == List::Workers && std::any_of(changes_.begin(), changes_.end(), [this](const Change *change) {
                return change->after && change->after->cell(table_.activeColumn) != u"1";
            });
        if (isNeeded && !database_.tableDef(table_.table).findField(InactiveNameField)) {
            const store::SchemaTable *schema = store::findTable(table_.table);
            const auto field = std::find_if(schema->fields.begin(), schema->fields.end(),
                                            [](const dao::Field &one) { return one.name == InactiveNameField; });
            try {
                database_.Append(table_.table, *field);
            } catch (const dao::DataError &error) {
                throw basic::RunTimeError(error.number(),
                                          QStringLiteral("A worker cannot be made inactive, since the file has no field for the "
                                                         "name: %1")
                                              .arg(error.description()));
            }
        }
    }

    Record stored(const dao::Recordset &rows, const ListRows &codec) const
    {
        Record record = codec.read(rows);
        if (table_.list == List::Pests) {
            record.set(table_.columnCount() - 1, cropTypes_.value(record.key));
        }
        return record;
    }

    /// A table without a key knows its rows by their cells.
    const Change *changeFor(const Record &record) const
    {
        if (!table_.key.isEmpty()) {
            return waiting_.value(record.key);
        }
        const auto found = std::find_if(waiting_.begin(), waiting_.end(), [&](const Change *change) {
            return change->before && change->before->cells == record.cells;
        });
        return found == waiting_.end() ? nullptr : *found;
    }

    void writeRow(dao::Recordset &rows, const ListRows &codec)
    {
        const Record now = stored(rows, codec);
        const Change *change = changeFor(now);
        if (!change) {
            return;
        }
        if (!change->before || change->before->cells != now.cells) {
            met_.insert(change, now);
            return;
        }
        waiting_.remove(change->key());
        const Record after = change->after.value_or(Record{change->key(), Cells(table_.columns.size())});
        if (table_.list == List::Pests) {
            const int types = table_.columnCount() - 1;
            writePestCropTypes(database_, change->key(), now.cell(types), after.cell(types));
        }
        if (!change->after) {
            rows.Delete();
            return;
        }
        rows.Edit();
        codec.write(rows, after);
        rows.Update();
    }

    void addRows(dao::Recordset &rows, const ListRows &codec, std::vector<Conflict> &conflicts)
    {
        for (const Change *change : changes_) {
            if (waiting_.value(change->key()) != change) {
                continue;
            }
            if (change->before || met_.contains(change)) {
                conflicts.push_back({*change, reasonFor(change)});
                continue;
            }
            rows.AddNew();
            codec.write(rows, *change->after);
            rows.Update();
            if (table_.list == List::Pests) {
                writePestCropTypes(database_, change->key(), {}, change->after->cell(table_.columnCount() - 1));
            }
        }
    }

    QString reasonFor(const Change *change) const
    {
        const auto met = met_.constFind(change);
        if (met == met_.constEnd()) {
            return QStringLiteral("Another program deleted the %1 meanwhile.").arg(nameOf(*change));
        }
        if (!change->before) {
            return QStringLiteral("Another program added the %1 %2 under the same key meanwhile.")
                .arg(table_.singular, quoted(met->cell(table_.nameColumn)));
        }
        return QStringLiteral("Another program changed the %1 meanwhile; what is stored now is shown.").arg(nameOf(*change));
    }

    dao::Database &database_;
    const Table &table_;
    const std::vector<const Change *> &changes_;
    QHash<std::int32_t, QString> cropTypes_;
    /// By key, until their row was found as it should be.
    QHash<std::int32_t, const Change *> waiting_;
    /// What another program has made of a row.
    QHash<const Change *, Record> met_;
};

/// A transaction of one file, locked for other writers from its start, so that nothing changes between comparing and writing.
class FileWrite
{
public:
    FileWrite(dao::Database &database, const QString &table) : scope_(database)
    {
        try {
            database.Execute(sqlText(u"DELETE FROM ", table, u" where 1 = 0"));
        } catch (const basic::RunTimeError &) {
            scope_.rollback();
            throw;
        }
    }
    ~FileWrite()
    {
        basic::runOrIgnore([this] { scope_.rollback(); });
    }
    FileWrite(const FileWrite &) = delete;
    FileWrite &operator=(const FileWrite &) = delete;

    void commit() { scope_.commit(); }

private:
    dao::CommitScope scope_;
};

/// Keys are never given twice, so the last one of a list outlives its row.
void rememberKey(dao::Database &main, const Table &table, std::int32_t key)
{
    if (!main.tableNames().contains(store::LastKeysTable, Qt::CaseInsensitive)) {
        main.Append(store::findTable(store::LastKeysTable)->definition());
    }
    dao::Recordset rows =
        main.OpenRecordset(sqlText(u"Select * from ", store::LastKeysTable, u" where ListTable = '", table.table, u"'"),
                           dao::RecordsetType::Dynaset);
    if (rows.Eof()) {
        rows.AddNew();
        rows.set(u"ListTable", table.table);
    } else if (rows.longValue("LastKey") < key) {
        rows.Edit();
    } else {
        return;
    }
    rows.set(u"LastKey", key);
    rows.Update();
}

std::vector<Conflict> heldRows(SessionContext &session, const std::vector<Change> &changes)
{
    std::vector<Conflict> conflicts;
    HolderReader reader(session);
    for (const Change &change : changes) {
        if (change.after) {
            continue;
        }
        const Holders holders = reader.holdersOf(change.list, *change.before);
        if (!holders.none()) {
            conflicts.push_back(
                {change,
                 QStringLiteral("The %1 cannot be deleted: %2 %3 to it.")
                     .arg(nameOf(change), holders.text(),
                          holders.kinds.size() == 1 && holders.kinds.front().count == 1 ? QStringLiteral("refers")
                                                                                        : QStringLiteral("refer"))});
        }
    }
    return conflicts;
}

std::vector<Change> changesOf(const std::vector<Change> &changes, store::DatabaseFile file)
{
    std::vector<Change> found;
    std::copy_if(changes.begin(), changes.end(), std::back_inserter(found),
                 [file](const Change &change) { return tableOf(change.list).file == file; });
    return found;
}

void writeFile(SessionContext &session, const std::vector<Change> &changes, std::vector<Conflict> &conflicts)
{
    for (const List list : AllLists) {
        std::vector<const Change *> own;
        for (const Change &change : changes) {
            if (change.list == list) {
                own.push_back(&change);
            }
        }
        if (!own.empty()) {
            const Table &table = tableOf(list);
            TableWriter(*handleFor(session, table), table, own).write(conflicts);
        }
    }
}

} // namespace

std::vector<Change> inverse(const std::vector<Change> &changes)
{
    std::vector<Change> inverted;
    for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
        inverted.push_back({change->list, change->after, change->before});
    }
    return inverted;
}

std::vector<Conflict> writeChanges(SessionContext &session, const std::vector<Change> &changes)
{
    if (std::vector<Conflict> held = heldRows(session, changes); !held.empty()) {
        return held;
    }
    const std::vector<Change> main = changesOf(changes, store::DatabaseFile::Main);
    const std::vector<Change> spray = changesOf(changes, store::DatabaseFile::Spray);
    const bool deletes = std::any_of(changes.begin(), changes.end(), [](const Change &change) { return !change.after; });
    std::unique_ptr<FileWrite> mainWrite;
    std::unique_ptr<FileWrite> sprayWrite;
    if (!main.empty() || deletes) {
        mainWrite = std::make_unique<FileWrite>(*session.dbMain, tableOf(List::Farms).table);
    }
    if (!spray.empty()) {
        sprayWrite = std::make_unique<FileWrite>(*session.dbSpray, tableOf(List::Pests).table);
    }
    std::vector<Conflict> conflicts;
    for (const Change &change : changes) {
        const Table &table = tableOf(change.list);
        if (!change.after && !table.key.isEmpty()) {
            rememberKey(*session.dbMain, table, change.key());
        }
    }
    writeFile(session, main, conflicts);
    writeFile(session, spray, conflicts);
    if (!conflicts.empty()) {
        return conflicts;
    }
    if (mainWrite) {
        mainWrite->commit();
    }
    if (sprayWrite) {
        try {
            sprayWrite->commit();
        } catch (const basic::RunTimeError &) {
            if (!main.empty()) {
                writeChanges(session, inverse(main));
            }
            throw;
        }
    }
    return {};
}

} // namespace lists
