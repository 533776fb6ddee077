// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Upgrades.h"

#include "common/WeekNumber.h"
#include "platform/basic/Formats.h"
#include "platform/dao/CommitScope.h"
#include "store/Schema.h"

#include <QHash>

#include <algorithm>

namespace store
{

namespace
{

const QString TempBlockTable = QStringLiteral("tblTempBlockPlant");

/// A row of tblTempBlockPlant without its work flag, which every refresh clears.
struct Planting {
    dao::Value tBlockPID, tBlockID, tPBlock, tBlock, PBActive;
    bool operator==(const Planting &) const = default;
};

/// Plantings by key. A planting that occurs twice has its first position and its last values.
struct Plantings {
    std::vector<Planting> rows;
    QHash<std::int32_t, std::size_t> byKey;

    void put(std::int32_t key, Planting planting)
    {
        const auto known = byKey.constFind(key);
        if (known != byKey.constEnd()) {
            rows[*known] = std::move(planting);
            return;
        }
        byKey.insert(key, rows.size());
        rows.push_back(std::move(planting));
    }
};

Plantings readPlantings(dao::Database &database)
{
    dao::Recordset source = database.OpenRecordset(
        QStringLiteral("Select *, tblBlockPlant.BlockID as TTT from tblBlockPlant, tblBlock where tblBlockPlant.BlockID = "
                       "tblBlock.BlockID"));
    const int key = source.fieldIndex(u"BlockPID");
    const int block = source.fieldIndex(u"TTT");
    const int name = source.fieldIndex(u"PBlock");
    const int blockName = source.fieldIndex(u"Block");
    const int active = source.fieldIndex(u"PBActive");
    Plantings plantings;
    for (; !source.Eof(); source.MoveNext()) {
        plantings.put(
            source.longValue(key),
            {source.value(key), source.value(block), source.value(name), source.value(blockName), source.boolean(active)});
    }
    return plantings;
}

/// Fields of an open set of tblTempBlockPlant.
class CopyFields
{
public:
    explicit CopyFields(const dao::Recordset &rows)
        : key_(rows.fieldIndex(u"tBlockPID")), block_(rows.fieldIndex(u"tBlockID")), name_(rows.fieldIndex(u"tPBlock")),
          blockName_(rows.fieldIndex(u"tBlock")), flag_(rows.fieldIndex(u"tFlag")), active_(rows.fieldIndex(u"PBActive"))
    {
    }

    Planting read(const dao::Recordset &rows) const
    {
        return {rows.value(key_), rows.value(block_), rows.value(name_), rows.value(blockName_), rows.boolean(active_)};
    }
    std::int32_t key(const dao::Recordset &rows) const { return rows.longValue(key_); }
    bool flag(const dao::Recordset &rows) const { return rows.boolean(flag_); }
    bool active(const dao::Recordset &rows) const { return rows.boolean(active_); }

    void write(dao::Recordset &rows, const Planting &planting) const
    {
        try {
            setAll(rows, planting);
        } catch (const basic::RunTimeError &error) {
            const auto *key = std::get_if<std::int32_t>(&planting.tBlockPID);
            throw basic::RunTimeError(error.number(),
                                      QStringLiteral("The row %1 of tblBlockPlant in %2, or its block, cannot be copied: %3")
                                          .arg(key != nullptr ? *key : 0)
                                          .arg(fileName(DatabaseFile::Main), error.description()));
        }
    }
    void activate(dao::Recordset &rows) const { rows.set(active_, true); }

private:
    void setAll(dao::Recordset &rows, const Planting &planting) const
    {
        rows.set(key_, planting.tBlockPID);
        rows.set(block_, planting.tBlockID);
        rows.set(name_, planting.tPBlock);
        rows.set(blockName_, planting.tBlock);
        rows.set(flag_, false);
        rows.set(active_, planting.PBActive);
    }

    int key_, block_, name_, blockName_, flag_, active_;
};

enum class Work { Check, Write };

/// Walks the copy once. The first row found for a planting is its row; rows that no planting claims become active when
/// their flag is set. With Work::Check nothing is written, and the result says whether anything would be.
bool refreshCopy(dao::Database &database, const Plantings &plantings, Work work)
{
    dao::Recordset copy =
        database.OpenRecordset(QStringLiteral("Select * from tblTempBlockPlant"),
                               work == Work::Check ? dao::RecordsetType::Snapshot : dao::RecordsetType::Dynaset);
    const CopyFields fields(copy);
    std::vector<bool> claimed(plantings.rows.size(), false);
    for (; !copy.Eof(); copy.MoveNext()) {
        const auto found = plantings.byKey.constFind(fields.key(copy));
        const bool isRow = found != plantings.byKey.constEnd() && !claimed[*found];
        if (isRow) {
            claimed[*found] = true;
        }
        const bool differs = isRow ? fields.flag(copy) || !(fields.read(copy) == plantings.rows[*found])
                                   : fields.flag(copy) && !fields.active(copy);
        if (!differs) {
            continue;
        }
        if (work == Work::Check) {
            return true;
        }
        copy.Edit();
        if (isRow) {
            fields.write(copy, plantings.rows[*found]);
        } else {
            fields.activate(copy);
        }
        copy.Update();
    }
    for (std::size_t i = 0; i < claimed.size(); ++i) {
        if (claimed[i]) {
            continue;
        }
        if (work == Work::Check) {
            return true;
        }
        copy.AddNew();
        fields.write(copy, plantings.rows[i]);
        copy.Update();
    }
    return false;
}

/// Nothing for an empty text. A text that is a date counts as one, as in a comparison with a date; any other raises the error of
/// reading it.
std::optional<QDate> completionDay(const dao::Recordset &rows, int field)
{
    const dao::Value held = rows.value(field);
    const auto *text = std::get_if<QString>(&held);
    if (text != nullptr && text->isEmpty()) {
        return std::nullopt;
    }
    const QDate day = text != nullptr ? basic::dateFromText(*text) : QDate();
    return day.isValid() ? day : rows.date(field)->date();
}

/// Walks the completed instructions; with Work::Check it only reports whether a week would change.
bool rewriteWeeks(dao::Database &database, Work work)
{
    dao::Recordset rows =
        database.OpenRecordset(QStringLiteral("Select PMTransID, PMTransDateCom, PMTransWeek from tblPMTrans where "
                                              "PMTransDateCom is not null order by PMTransID"),
                               work == Work::Check ? dao::RecordsetType::Snapshot : dao::RecordsetType::Dynaset);
    const int completed = rows.fieldIndex(u"PMTransDateCom");
    const int stored = rows.fieldIndex(u"PMTransWeek");
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::optional<QDate> day = completionDay(rows, completed);
        if (!day) {
            continue;
        }
        const std::int32_t week = weekNumber(*day);
        // Whatever else the field holds is replaced.
        if (rows.value(stored) == dao::Value(week)) {
            continue;
        }
        if (work == Work::Check) {
            return true;
        }
        rows.Edit();
        rows.set(stored, week);
        rows.Update();
    }
    return false;
}

/// Indexes that older files lack, by their fields, and the name of the one that they replace.
struct ReplacedIndex {
    QStringView table;
    QStringView replacedName;
    std::vector<QString> fields;
};
const std::vector<ReplacedIndex> ReplacedIndexes{
    {u"tblPMData", u"tblPMData_CTargetID_PMBPunt", {"CTargetID", "BlockID", "PMBPunt"}},
    {u"tblPMDataMax",
     u"tblPMDataMax_PMTransID_CTargetID_BlockID",
     {"PMTransID", "CTargetID", "BlockID", "PMCountMax", "PMYesMax"}},
    {u"tblPMDataMax", u"tblPMDataMax_CTargetID_BlockID", {"BlockID", "CTargetID"}}};

void replaceIndex(dao::Database &database, const ReplacedIndex &replaced)
{
    const QString table = replaced.table.toString();
    const std::vector<dao::Index> present = database.tableDef(table).Indexes();
    const auto isPresent = [&](const auto &matches) { return std::any_of(present.begin(), present.end(), matches); };
    const bool isMissing = !isPresent([&](const dao::Index &index) { return index.fields == replaced.fields; });
    const bool isLeftOver = isPresent([&](const dao::Index &index) { return index.name == replaced.replacedName; });
    if (!isMissing && !isLeftOver) {
        return;
    }
    dao::CommitScope scope(database);
    try {
        if (isMissing) {
            const std::vector<dao::Index> wanted = findTable(table)->definition().Indexes();
            database.Append(table, *std::find_if(wanted.begin(), wanted.end(), [&](const dao::Index &index) {
                                return index.fields == replaced.fields;
                            }));
        }
        if (isLeftOver) {
            database.removeIndex(table, replaced.replacedName.toString());
        }
    } catch (const basic::RunTimeError &) {
        scope.rollback();
        throw;
    }
    scope.commit();
}

} // namespace

QString TestTableExists(SessionContext &session, const QString &table)
{
    try {
        return session.dbPest->tableDef(table).Name().isEmpty() ? QString() : table;
    } catch (const basic::RunTimeError &error) {
        return error.number() == static_cast<int>(dao::DataErrorNumber::ItemNotFound) ? QString() : table;
    }
}

bool ObjectExists(const dao::TableDef &table, const QString &field)
{
    return table.findField(field) != nullptr;
}

void Ensure_TempBlockTable(SessionContext &session, const std::function<void(const basic::RunTimeError &)> &report)
{
    if (!TestTableExists(session, TempBlockTable).isEmpty()) {
        return;
    }
    const auto step = [&](const std::function<void()> &body) {
        try {
            body();
        } catch (const basic::RunTimeError &error) {
            report(error);
        }
    };
    dao::TableDef definition = session.dbPest->CreateTableDef(TempBlockTable);
    for (const dao::Field &field : findTable(TempBlockTable)->fields) {
        step([&] { definition.Append(field); });
    }
    step([&] { session.dbPest->Append(definition); });
}

void Ensure_PMRepeatField(SessionContext &session)
{
    basic::runOrIgnore([&] {
        dao::Database &database = *session.dbPest;
        const dao::TableDef table = database.tableDef(QStringLiteral("tblPMTrans"));
        const dao::Field repeat = dao::TableDef::CreateField(QStringLiteral("PMRepeat"), dao::FieldType::Boolean);
        if (ObjectExists(table, repeat.name)) {
            return;
        }
        dao::CommitScope scope(database);
        database.Append(table.Name(), repeat);
        database.Execute(QStringLiteral("UPDATE tblPMTrans SET PMRepeat = False"));
        scope.commit();
    });
}

void Ensure_Indexes(SessionContext &session)
{
    for (const ReplacedIndex &replaced : ReplacedIndexes) {
        replaceIndex(*session.dbPest, replaced);
    }
}

void Update_TempBlock(SessionContext &session)
{
    const Plantings plantings = readPlantings(*session.dbMain);
    dao::Database &database = *session.dbPest;
    if (!refreshCopy(database, plantings, Work::Check)) {
        return;
    }
    dao::CommitScope scope(database);
    refreshCopy(database, plantings, Work::Write);
    scope.commit();
}

void Recalc_PMTransWeek(SessionContext &session)
{
    dao::Database &database = *session.dbPest;
    if (!rewriteWeeks(database, Work::Check)) {
        return;
    }
    dao::CommitScope scope(database);
    rewriteWeeks(database, Work::Write);
    scope.commit();
}

} // namespace store
