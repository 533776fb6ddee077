// SPDX-License-Identifier: GPL-3.0-or-later
#include "Check.h"

#include "Output.h"
#include "Progress.h"

#include "platform/basic/RunTimeError.h"
#include "platform/basic/TextFiles.h"
#include "platform/dao/Workspace.h"
#include "store/Schema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QTemporaryDir>

#include <array>
#include <memory>

using store::DatabaseFile;
using store::SchemaTable;

namespace
{

using Keys = QSet<std::int32_t>;
using DatabasePointer = std::unique_ptr<dao::Database>;

Keys keysOf(dao::Database &database, QStringView table, QStringView field)
{
    Keys keys;
    dao::Recordset rows = database.OpenRecordset(QStringLiteral("Select distinct %1 from %2").arg(field, table));
    for (; !rows.Eof(); rows.MoveNext()) {
        keys.insert(rows.longValue(0));
    }
    return keys;
}

/// Prints faults and notes as they are found.
class Findings
{
public:
    void fault(const QString &text)
    {
        printLine(QStringLiteral("  FAULT: %1").arg(text));
        ++faults_;
    }
    void note(qint64 count, const QString &text)
    {
        if (count > 0) {
            printLine(QStringLiteral("  note: %1: %2").arg(text).arg(count));
        }
    }
    bool none() const { return faults_ == 0; }

private:
    int faults_ = 0;
};

void checkTables(const dao::Database &database, DatabaseFile file, Findings &findings)
{
    const QStringList present = database.tableNames();
    for (const SchemaTable &table : store::schema()) {
        if (table.file != file) {
            continue;
        }
        if (!present.contains(table.name, Qt::CaseInsensitive)) {
            if (table.optional) {
                printLine(QStringLiteral("  note: without %1, which the program adds when it needs it").arg(table.name));
            } else {
                findings.fault(QStringLiteral("the table %1 is missing").arg(table.name));
            }
            continue;
        }
        const dao::TableDef definition = database.tableDef(table.name);
        for (const dao::Field &field : table.fields) {
            const dao::Field *found = definition.findField(field.name);
            if (!found && store::isOptionalField(table, field.name)) {
                printLine(
                    QStringLiteral("  note: without %1.%2, which the program adds when it needs it").arg(table.name, field.name));
            } else if (!found) {
                findings.fault(QStringLiteral("the field %1 of the table %2 is missing").arg(field.name, table.name));
            } else if (found->type != field.type && !store::isOfOpenType(table, field.name)) {
                findings.fault(QStringLiteral("the field %1 of the table %2 has another type").arg(field.name, table.name));
            }
        }
    }
}

DatabasePointer open(const QString &path, bool readOnly)
{
    return dao::Workspace::OpenDatabase(path, false, readOnly, store::connectText());
}

/// Rolls the journal of a killed program back in a copy, as the next start will do in the file itself.
DatabasePointer openRepairedCopy(const QString &path, const QTemporaryDir &copies)
{
    const QString copy = copies.filePath(QFileInfo(path).fileName());
    for (const QString &part : QStringList{path} + dao::Workspace::companionFiles(path)) {
        const QString target = copies.filePath(QFileInfo(part).fileName());
        if (QFile::exists(part) && !QFile::copy(part, target)) {
            throw basic::RunTimeError(basic::ErrorNumber::PathFileAccess,
                                      QStringLiteral("%1 could not be copied to %2 for the check").arg(part, target));
        }
    }
    return open(copy, false);
}

DatabasePointer openForCheck(const QString &path, const QTemporaryDir &copies)
{
    try {
        DatabasePointer database = open(path, true);
        // A check of the file itself would keep the program that has the farm open from writing until it ends.
        if (QFileInfo(QFileInfo(path).absolutePath() + QStringLiteral("/PestMon.lock")).size() == 0) {
            return database;
        }
        printLine(QStringLiteral("  note: the farm is open, so a copy of the file is checked"));
        const QString copy = copies.filePath(QFileInfo(path).fileName());
        database->backupTo(copy);
        return open(copy, true);
    } catch (const dao::DataError &error) {
        if (error.number() != static_cast<int>(dao::DataErrorNumber::NeedsRepair)) {
            throw;
        }
        printLine(QStringLiteral("  note: %1").arg(error.description()));
        return openRepairedCopy(path, copies);
    }
}

DatabasePointer checkFile(const QString &folder, DatabaseFile file, const QTemporaryDir &copies, Findings &findings)
{
    const QString wanted = folder + u'/' + store::fileName(file);
    const QString path = basic::findPath(wanted).value_or(wanted);
    printLine(path);
    try {
        DatabasePointer database = openForCheck(path, copies);
        QStringList damage;
        {
            Progress progress(QStringLiteral("Checking %1").arg(store::fileName(file)), 100);
            damage = database->checkIntegrity([&](int percent) { progress.show(percent); });
        }
        for (const QString &one : damage) {
            findings.fault(one);
        }
        checkTables(*database, file, findings);
        if (damage.isEmpty()) {
            for (const QString &table : database->tableNames()) {
                for (const QString &mismatch : database->mismatches(table)) {
                    findings.fault(mismatch);
                }
            }
        }
        return damage.isEmpty() ? std::move(database) : nullptr;
    } catch (const basic::RunTimeError &error) {
        findings.fault(error.description());
        return nullptr;
    }
}

/// A key that should be found in another table.
struct Reference {
    QStringView table;
    QStringView field;
    QStringView what;
};

void noteOrphans(dao::Database &database, const Keys &known, const Reference &reference, Findings &findings)
{
    qint64 orphans = 0;
    dao::Recordset used =
        database.OpenRecordset(QStringLiteral("Select %1, Count(*) from %2 group by %1").arg(reference.field, reference.table));
    for (; !used.Eof(); used.MoveNext()) {
        const std::int32_t key = used.longValue(0);
        // 0 is an empty key.
        if (key != 0 && !known.contains(key)) {
            orphans += used.longValue(1);
        }
    }
    findings.note(orphans, QStringLiteral("rows of %1 whose %2 is gone").arg(reference.table, reference.what));
}

void noteMainOrphans(dao::Database &database, Findings &findings)
{
    noteOrphans(database, keysOf(database, u"tblFarms", u"FarmID"), {u"tblBlock", u"FarmID", u"farm"}, findings);
    noteOrphans(database, keysOf(database, u"tblBlock", u"BlockID"), {u"tblBlockPlant", u"BlockID", u"block"}, findings);
    noteOrphans(database, keysOf(database, u"tblCrVariety", u"CrVaID"), {u"tblBlockPlant", u"CrVaID", u"variety"}, findings);
}

void notePestOrphans(dao::Database &pest, dao::Database *main, dao::Database *spray, Findings &findings)
{
    const Keys instructions = keysOf(pest, u"tblPMTrans", u"PMTransID");
    for (const QStringView table : {u"tblPMBlockTrans", u"tblPMTarTrans", u"tblPMData", u"tblPMDataMax"}) {
        noteOrphans(pest, instructions, {table, u"PMTransID", u"instruction"}, findings);
    }
    if (main) {
        noteOrphans(pest, keysOf(*main, u"tblBlock", u"BlockID"), {u"tblPMBlockTrans", u"BlockID", u"block"}, findings);
        const Keys plantings = keysOf(*main, u"tblBlockPlant", u"BlockPID");
        for (const QStringView table :
             {u"tblLeaveAnalysis", u"tblFruitAnalysis", u"tblSoilBasic", u"tblSoilMicro", u"tblSoilExtraction"}) {
            noteOrphans(pest, plantings, {table, u"BlockPID", u"planting"}, findings);
        }
    }
    if (spray) {
        noteOrphans(pest, keysOf(*spray, u"tblCTarget", u"CTargetID"), {u"tblPMTarTrans", u"CTargetID", u"target"}, findings);
    }
}

/// Rows beyond the first for the same keys that hold nothing but zeros: saving an instruction again leaves them behind. One pass
/// over the table, since a Jet file has no index by the instruction.
qint64 duplicateZeroRows(dao::Database &database, QStringView table, const QStringList &keys, const QStringList &values)
{
    QStringList zeros;
    for (const QString &value : values) {
        zeros.append(QStringLiteral("(%1 is null or %1 = 0)").arg(value));
    }
    // With one minimum, SQLite takes the other columns from the row that has it: whether the first row is a zero row.
    dao::Recordset groups = database.OpenRecordset(
        QStringLiteral("Select Sum(%1), Min(%2ID), (%1) from %3 where PMTransID in (Select PMTransID from tblPMTrans) "
                       "group by PMTransID, %4 having Count(*) > 1")
            .arg(zeros.join(QStringLiteral(" and ")), table.mid(3), table, keys.join(u", ")));
    qint64 duplicates = 0;
    for (; !groups.Eof(); groups.MoveNext()) {
        duplicates += groups.longValue(0) - groups.longValue(2);
    }
    return duplicates;
}

void noteDuplicateRows(dao::Database &pest, Findings &findings)
{
    const qint64 data = duplicateZeroRows(pest, u"tblPMData", {"CTargetID", "BlockID", "PMBPunt"},
                                          {"PMCount", "PMCountUnder", "PMCountUpper", "PMYes", "PMYesUnder", "PMYesUpper"});
    const qint64 totals =
        duplicateZeroRows(pest, u"tblPMDataMax", {"CTargetID", "BlockID"},
                          {"PMCountMax", "PMCountUnderMax", "PMCountUpperMax", "PMYesMax", "PMYesUnderMax", "PMYesUpperMax"});
    findings.note(data, QStringLiteral("duplicate zero rows of tblPMData, as saving an instruction again makes them"));
    findings.note(totals, QStringLiteral("further zero rows of tblPMDataMax, as every instruction has them"));
}

} // namespace

bool checkFarm(const QString &databasesFolder)
{
    const QString folder = QDir(databasesFolder).absolutePath();
    Findings findings;
    const QTemporaryDir copies;
    std::array<DatabasePointer, std::size(store::AllDatabaseFiles)> databases;
    for (std::size_t i = 0; i < databases.size(); ++i) {
        databases[i] = checkFile(folder, store::AllDatabaseFiles[i], copies, findings);
    }
    const auto &[main, pest, spray] = databases;
    // With a table missing the links cannot be followed.
    if (findings.none()) {
        printLine(QStringLiteral("Links between tables"));
        noteMainOrphans(*main, findings);
        notePestOrphans(*pest, main.get(), spray.get(), findings);
        noteDuplicateRows(*pest, findings);
    }
    printLine(findings.none() ? QStringLiteral("Nothing is wrong.") : QStringLiteral("Faults were found."));
    return findings.none();
}
