// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Schema.h"

#include "common/MonitoringConstants.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/Workspace.h"
#include "store/AnalysisTables.h"

#include <algorithm>
#include <iterator>

namespace store
{

namespace
{

using dao::FieldType;

constexpr int NameSize = 50;
constexpr int NoteSize = 255;

dao::Field field(QStringView name, FieldType type, int size = 0)
{
    return dao::TableDef::CreateField(name.toString(), type, size);
}
dao::Field number(QStringView name)
{
    return field(name, FieldType::Long);
}
dao::Field shortNumber(QStringView name)
{
    return field(name, FieldType::Integer);
}
dao::Field yesNo(QStringView name)
{
    return field(name, FieldType::Boolean);
}
dao::Field date(QStringView name)
{
    return field(name, FieldType::Date);
}
dao::Field text(QStringView name, int size = NameSize)
{
    return field(name, FieldType::Text, size);
}

using Fields = std::vector<dao::Field>;
using Indexes = std::vector<std::vector<QString>>;

SchemaTable plain(DatabaseFile file, QStringView name, Fields fields, Indexes indexes = {})
{
    return {file, name.toString(), std::move(fields), {}, std::move(indexes)};
}

/// The key is the first field.
SchemaTable keyed(DatabaseFile file, QStringView name, Fields fields, Indexes indexes = {})
{
    SchemaTable table = plain(file, name, std::move(fields), std::move(indexes));
    table.key = table.fields.front().name;
    return table;
}

SchemaTable autonumbered(QStringView name, Fields fields, Indexes indexes = {})
{
    SchemaTable table = keyed(DatabaseFile::Pest, name, std::move(fields), std::move(indexes));
    table.fields.front().autoIncrement = true;
    return table;
}

std::vector<SchemaTable> mainTables()
{
    constexpr DatabaseFile Main = DatabaseFile::Main;
    SchemaTable lastKeys = plain(Main, LastKeysTable, {text(u"ListTable"), number(u"LastKey")});
    lastKeys.optional = true;
    return {
        keyed(Main, u"tblFarms", {number(u"FarmID"), text(u"Farm"), yesNo(u"isactive")}),
        keyed(Main, u"tblBlock",
              {number(u"BlockID"), text(u"Block"), number(u"FarmID"), shortNumber(u"NoofMpoints"), yesNo(u"active")},
              {{"FarmID"}}),
        keyed(Main, u"tblBlockPlant",
              {number(u"BlockPID"), number(u"BlockID"), text(u"PBlock"), yesNo(u"PBActive"), number(u"CrVaID")},
              {{"BlockID"}, {"CrVaID"}}),
        keyed(Main, u"tblCrVariety", {number(u"CrVaID"), number(u"CrTyID"), text(u"Variety")}, {{"CrTyID"}}),
        keyed(Main, u"tblCrType", {number(u"CrTyID"), number(u"CrGrID"), text(u"Type")}, {{"CrGrID"}, {"Type"}}),
        keyed(Main, u"tblCrGroup", {number(u"CrGrID"), text(u"Group")}),
        // A worker who cannot be picked has no nickname; the name is in the field after it meanwhile.
        keyed(Main, u"tblWorker", {number(u"WorkerID"), text(u"WNickName"), text(u"WInactive")}),
        plain(Main, u"tblYear", {text(u"FYear")}),
        plain(Main, u"tblActiveIngredient", {number(u"ActInID"), text(u"ActiveIngredient", NoteSize)}, {{"ActiveIngredient"}}),
        std::move(lastKeys),
    };
}

std::vector<SchemaTable> monitoringTables()
{
    return {
        keyed(DatabaseFile::Pest, u"tblPMMethod", {number(u"PMMethodID"), text(u"PMMethod")}),
        autonumbered(u"tblPMTrans",
                     {number(u"PMTransID"), number(u"BlockID"), number(u"PMMethodID"), date(u"PMTransDate"),
                      date(u"PMTransDateCom"), shortNumber(u"PMTransWeek"), text(u"PMNotes", NoteSize), text(u"PMPerson"),
                      shortNumber(u"NoofMpoints"), yesNo(u"PMTransCom"), yesNo(u"PMRepeat")},
                     {{"PMTransDate"}, {"PMTransDateCom"}, {"BlockID"}}),
        plain(DatabaseFile::Pest, u"tblPMBlockTrans", {number(u"PMTransID"), number(u"BlockID"), shortNumber(u"NoofMpoints")},
              {{"PMTransID", "BlockID"}, {"BlockID"}}),
        autonumbered(u"tblPMTarTrans", {number(u"PMTarTransID"), number(u"PMTransID"), number(u"CTargetID")},
                     {{"PMTransID", "CTargetID"}}),
        // The largest table: each further index would slow down every save of an instruction.
        autonumbered(u"tblPMData",
                     {number(u"PMDataID"), number(u"PMTransID"), number(u"BlockID"), number(u"CTargetID"),
                      shortNumber(u"PMBPunt"), shortNumber(u"PMCount"), shortNumber(u"PMCountUnder"),
                      shortNumber(u"PMCountUpper"), yesNo(u"PMYes"), yesNo(u"PMYesUnder"), yesNo(u"PMYesUpper")},
                     {{"PMTransID", "BlockID", "CTargetID", "PMBPunt"}, {"CTargetID", "BlockID", "PMBPunt"}}),
        // The first index answers rankings and sums of the farm without the rows: most totals are the zero rows of the points.
        // The second must not begin with the pest, or SQLite prefers it for all blocks too.
        autonumbered(u"tblPMDataMax",
                     {number(u"PMDataMaxID"), number(u"PMTransID"), number(u"BlockID"), number(u"CTargetID"),
                      shortNumber(u"PMCountMax"), shortNumber(u"PMCountUnderMax"), shortNumber(u"PMCountUpperMax"),
                      shortNumber(u"PMYesMax"), shortNumber(u"PMYesUnderMax"), shortNumber(u"PMYesUpperMax")},
                     {{"PMTransID", "CTargetID", "BlockID", "PMCountMax", "PMYesMax"}, {"BlockID", "CTargetID"}}),
        autonumbered(u"tblPMTPest", {number(u"PMTPestID"), number(u"CTargetID")}, {{"CTargetID"}}),
        autonumbered(u"tblPMTBlock", {number(u"PMTBlockID"), number(u"BlockID"), shortNumber(u"NoofMpoints")}, {{"BlockID"}}),
        autonumbered(u"tblPMTempPest", {number(u"PMTempPestID"), number(u"CTargetID")}, {{"CTargetID"}}),
        autonumbered(u"tblPMTempBlock", {number(u"PMTempBlockID"), number(u"BlockID")}, {{"BlockID"}}),
    };
}

SchemaTable analysisTable(const AnalysisTable &analysis)
{
    Fields fields{field(analysis.table.key, FieldType::Long), field(u"BlockPID", FieldType::Long),
                  field(analysis.date, FieldType::Date)};
    const auto addText = [&fields](QStringView name) {
        if (!name.isEmpty()) {
            fields.push_back(field(name, FieldType::Text, NameSize));
        }
    };
    addText(analysis.part);
    addText(analysis.season);
    for (const AnalysisValueField &value : analysis.values) {
        fields.push_back(field(value.name, FieldType::Single));
    }
    addText(analysis.texture);
    return autonumbered(analysis.table.name, std::move(fields), {{"BlockPID"}, {analysis.date.toString()}});
}

std::vector<SchemaTable> analysisTables()
{
    SchemaTable copy = plain(
        DatabaseFile::Pest, u"tblTempBlockPlant",
        {number(u"tBlockPID"), text(u"tPBlock"), number(u"tBlockID"), text(u"tBlock"), yesNo(u"tFlag"), yesNo(u"PBActive")});
    copy.optional = true;
    return {
        analysisTable(LeaveAnalysis),
        analysisTable(FruitAnalysis),
        analysisTable(SoilBasicAnalysis),
        analysisTable(SoilMicroAnalysis),
        analysisTable(SoilExtractionAnalysis),
        plain(DatabaseFile::Pest, u"tblFTransaction", {date(u"FertDate")}, {{"FertDate"}}),
        std::move(copy),
    };
}

std::vector<SchemaTable> sprayTables()
{
    constexpr DatabaseFile Spray = DatabaseFile::Spray;
    return {
        keyed(Spray, u"tblCTarget", {number(u"CTargetID"), text(u"ChemTarget", NoteSize), text(u"CTType")},
              {{"CTType"}, {"ChemTarget"}}),
        plain(Spray, u"tblTargetFType", {number(u"CrTyID"), number(u"CTargetID")}, {{"CrTyID"}, {"CTargetID"}}),
    };
}

bool sameName(QStringView left, QStringView right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

void addMethods(dao::Database &database)
{
    dao::Recordset methods =
        database.OpenRecordset(QStringLiteral("Select * from tblPMMethod where PMMethodID =0"), dao::RecordsetType::Dynaset);
    for (const auto &[key, name] : {std::pair{CountMethod, CountMethodName}, std::pair{YesNoMethod, YesNoMethodName}}) {
        methods.AddNew();
        methods.set(u"PMMethodID", key);
        methods.set(u"PMMethod", QString(name));
        methods.Update();
    }
}

} // namespace

bool SchemaTable::hasAutonumber() const
{
    return !key.isEmpty() && fields.front().autoIncrement;
}

dao::TableDef SchemaTable::definition() const
{
    dao::TableDef table(name);
    for (const dao::Field &one : fields) {
        table.Append(one);
    }
    if (!key.isEmpty()) {
        table.Append(dao::Index{name + QStringLiteral("_key"), {key}, true, true});
    }
    for (const std::vector<QString> &one : indexes) {
        QString indexName = name;
        for (const QString &fieldName : one) {
            indexName += u'_' + fieldName;
        }
        table.Append(dao::Index{indexName, one, false, false});
    }
    return table;
}

const std::vector<SchemaTable> &schema()
{
    static const std::vector<SchemaTable> tables = [] {
        std::vector<SchemaTable> all;
        for (std::vector<SchemaTable> part : {mainTables(), monitoringTables(), analysisTables(), sprayTables()}) {
            std::move(part.begin(), part.end(), std::back_inserter(all));
        }
        return all;
    }();
    return tables;
}

const SchemaTable *findTable(QStringView name)
{
    const auto found =
        std::find_if(schema().begin(), schema().end(), [&](const SchemaTable &table) { return sameName(table.name, name); });
    return found == schema().end() ? nullptr : &*found;
}

bool isOptionalField(const SchemaTable &table, QStringView field)
{
    return (sameName(table.name, u"tblPMTrans") && sameName(field, u"PMRepeat"))
        || (sameName(table.name, u"tblWorker") && sameName(field, u"WInactive"));
}

bool isOfOpenType(const SchemaTable &table, QStringView field)
{
    return (sameName(table.name, u"tblBlock") && sameName(field, u"active"))
        || (sameName(table.name, u"tblYear") && sameName(field, u"FYear"));
}

QString fileName(DatabaseFile file)
{
    switch (file) {
    case DatabaseFile::Main:
        return QStringLiteral("ZN4.mdb");
    case DatabaseFile::Pest:
        return QStringLiteral("PestMon.mdb");
    case DatabaseFile::Spray:
        return QStringLiteral("ZN4_Spray.mdb");
    }
    return {};
}

QString connectText()
{
    return QStringLiteral(";pwd=krelpon");
}

void createDatabaseFile(DatabaseFile file, const QString &path, dao::FileKind kind)
{
    const std::unique_ptr<dao::Database> database = dao::Workspace::CreateDatabase(path, connectText(), kind);
    dao::CommitScope scope(*database);
    for (const SchemaTable &table : schema()) {
        if (table.file == file) {
            database->Append(table.definition());
        }
    }
    if (file == DatabaseFile::Pest) {
        addMethods(*database);
    }
    scope.commit();
}

} // namespace store
