// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TemporaryFarm.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"

#include "common/WeekNumber.h"
#include "store/SqlText.h"
#include "store/clsPestMONNew.h"

#include <QDir>
#include <QFile>

#include <vector>

using store::DatabaseFile;
using store::sqlText;

namespace
{

/// Three empty databases, made once a process and copied for every farm.
QString emptyDatabases()
{
    static const QTemporaryDir folder;
    static const bool made = [] {
        for (const DatabaseFile file : store::AllDatabaseFiles) {
            store::createDatabaseFile(file, folder.filePath(store::fileName(file)), TemporaryFarm::kind());
        }
        return true;
    }();
    Q_UNUSED(made)
    return folder.path();
}

[[noreturn]] void fail(const QString &what)
{
    throw basic::RunTimeError(basic::ErrorNumber::InvalidArgument, what);
}

QString textOf(const dao::Recordset &rows, int field)
{
    return rows.isNull(field) ? QStringLiteral("NULL") : rows.text(field);
}

} // namespace

TemporaryFarm::TemporaryFarm()
{
    QDir(appPath()).mkdir(QStringLiteral("Databases"));
    for (const DatabaseFile file : store::AllDatabaseFiles) {
        if (!QFile::copy(emptyDatabases() + u'/' + store::fileName(file), filePath(file))) {
            fail(QStringLiteral("%1 cannot be made").arg(filePath(file)));
        }
    }
    session.AppPath = appPath();
    session.DatabasePath = databasesPath();
    session.MainDBFile = filePath(DatabaseFile::Main);
    session.PestDBFile = filePath(DatabaseFile::Pest);
    open();
}

QString TemporaryFarm::filePath(DatabaseFile file) const
{
    return databasesPath() + u'/' + store::fileName(file);
}

dao::DatabaseHandle &TemporaryFarm::handle(DatabaseFile file)
{
    switch (file) {
    case DatabaseFile::Main:
        return session.dbMain;
    case DatabaseFile::Pest:
        return session.dbPest;
    case DatabaseFile::Spray:
        break;
    }
    return session.dbSpray;
}

void TemporaryFarm::close()
{
    for (const DatabaseFile file : store::AllDatabaseFiles) {
        handle(file).set(nullptr);
    }
}

void TemporaryFarm::open(bool readOnly)
{
    for (const DatabaseFile file : store::AllDatabaseFiles) {
        if (!handle(file).isSet()) {
            handle(file).set(dao::Workspace::OpenDatabase(filePath(file), false, readOnly, store::connectText()));
        }
    }
}

int TemporaryFarm::add(QStringView table, std::initializer_list<store::FieldValue> fields)
{
    const store::SchemaTable *known = store::findTable(table);
    if (!known) {
        fail(QStringLiteral("no table %1").arg(table));
    }
    const QString key = known->hasAutonumber() ? known->key : QString();
    return store::writeRow(*handle(known->file), sqlText(u"Select * from ", table, u" where 1 = 0"), store::Existing::LeaveAlone,
                           store::Missing::Add, std::vector<store::FieldValue>(fields), key);
}

int TemporaryFarm::addFarm(const QString &name, bool active)
{
    const int key = count("tblFarms") + 1;
    add(u"tblFarms", {{u"FarmID", key}, {u"Farm", name}, {u"isactive", active}});
    return key;
}

int TemporaryFarm::addWorker(const std::optional<QString> &name)
{
    const int key = count("tblWorker") + 1;
    add(u"tblWorker", {{u"WorkerID", key}, {u"WNickName", name ? dao::Value(*name) : dao::Value(dao::Null{})}});
    return key;
}

int TemporaryFarm::addBlock(const BlockRow &block)
{
    const int key = count("tblBlock") + 1;
    add(u"tblBlock",
        {{u"BlockID", key},
         {u"Block", block.name},
         {u"FarmID", block.farm},
         {u"NoofMpoints", block.points ? dao::Value(*block.points) : dao::Value(dao::Null{})},
         {u"active", block.active}});
    return key;
}

int TemporaryFarm::addPlanting(const PlantingRow &planting)
{
    const int key = count("tblBlockPlant") + 1;
    add(u"tblBlockPlant",
        {{u"BlockPID", key},
         {u"BlockID", planting.block},
         {u"PBlock", planting.name},
         {u"PBActive", planting.active},
         {u"CrVaID", planting.variety}});
    return key;
}

int TemporaryFarm::keyOf(QStringView table, QStringView key, QStringView nameField, const QString &name,
                         std::initializer_list<store::FieldValue> more)
{
    dao::Recordset found =
        session.dbMain->OpenRecordset(sqlText(u"Select * from ", table, u" where [", nameField, u"] = '", name, u"'"));
    if (!found.Eof()) {
        return found.longValue(key);
    }
    const int number = count(table.toString()) + 1;
    std::vector<store::FieldValue> fields(more);
    fields.push_back({key, number});
    fields.push_back({nameField, name});
    store::writeRow(*session.dbMain, sqlText(u"Select * from ", table, u" where 1 = 0"), store::Existing::LeaveAlone,
                    store::Missing::Add, fields);
    return number;
}

int TemporaryFarm::addVariety(const QString &group, const QString &type, const QString &variety)
{
    const int groupKey = keyOf(u"tblCrGroup", u"CrGrID", u"Group", group, {});
    const int typeKey = keyOf(u"tblCrType", u"CrTyID", u"Type", type, {{u"CrGrID", groupKey}});
    return keyOf(u"tblCrVariety", u"CrVaID", u"Variety", variety, {{u"CrTyID", typeKey}});
}

int TemporaryFarm::addTarget(const QString &name, const QString &kind, const std::vector<int> &types)
{
    const int key = count("tblCTarget") + 1;
    add(u"tblCTarget", {{u"CTargetID", key}, {u"ChemTarget", name}, {u"CTType", kind}});
    for (const int type : types) {
        add(u"tblTargetFType", {{u"CrTyID", type}, {u"CTargetID", key}});
    }
    return key;
}

int TemporaryFarm::addInstruction(const InstructionRow &instruction)
{
    using basic::SerialDate;
    clsPestMONNew store(session);
    const auto check = [&](clsPestMONNew::Status status) {
        if (status != clsPestMONNew::Done) {
            fail(store.lastError()->description());
        }
    };
    dao::CommitScope scope(*session.dbPest);
    std::int32_t key = 0;
    const SerialDate issued = SerialDate::fromDate(instruction.issued);
    const auto week = weekNumber(instruction.issued);
    check(
        store.New_Add_PMTrans(key, instruction.method, issued, instruction.notes, instruction.person, week, instruction.repeat));
    if (instruction.completed) {
        check(store.New_Save_PMTrans(key, instruction.method, issued, instruction.notes, instruction.person, week,
                                     SerialDate::fromDate(*instruction.completed), true, instruction.repeat));
    }
    for (const int target : instruction.targets) {
        check(store.Add_Pest_for_Trans(key, target));
    }
    for (const auto &[block, points] : instruction.blocks) {
        check(store.New_Add_Block_for_Transaction(key, block, static_cast<std::int16_t>(points)));
        for (int point = 1; point <= points; ++point) {
            for (const int target : instruction.targets) {
                check(store.New_Add_PestData(key, block, target, static_cast<std::int16_t>(point), {}));
                check(store.New_Add_PestDataMax(key, target, block, {}));
            }
        }
    }
    scope.commit();
    return key;
}

int TemporaryFarm::count(const QString &table, const QString &condition)
{
    const store::SchemaTable *known = store::findTable(table);
    if (!known) {
        fail(QStringLiteral("no table %1").arg(table));
    }
    const QString where = condition.isEmpty() ? QString() : QStringLiteral(" where ") + condition;
    return handle(known->file)->OpenRecordset(QStringLiteral("Select Count(*) from ") + table + where).longValue(0);
}

QStringList TemporaryFarm::rows(DatabaseFile file, const QString &sql)
{
    QStringList lines;
    for (dao::Recordset found = handle(file)->OpenRecordset(sql); !found.Eof(); found.MoveNext()) {
        QStringList cells;
        for (int i = 0; i < found.fieldCount(); ++i) {
            cells.append(textOf(found, i));
        }
        lines.append(cells.join(u'|'));
    }
    return lines;
}
