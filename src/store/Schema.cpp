// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Schema.h"

#include <algorithm>
#include <iterator>

namespace store
{

namespace
{

using dao::FieldType;

constexpr int NameSize = 50;
constexpr int NoteSize = 255;

dao::Field field(const char *name, FieldType type, int size = 0)
{
    return dao::TableDef::CreateField(QString::fromLatin1(name), type, size);
}
dao::Field number(const char *name)
{
    return field(name, FieldType::Long);
}
dao::Field shortNumber(const char *name)
{
    return field(name, FieldType::Integer);
}
dao::Field yesNo(const char *name)
{
    return field(name, FieldType::Boolean);
}
dao::Field date(const char *name)
{
    return field(name, FieldType::Date);
}
dao::Field text(const char *name, int size = NameSize)
{
    return field(name, FieldType::Text, size);
}

using Fields = std::vector<dao::Field>;
using Indexes = std::vector<std::vector<QString>>;

Fields singles(Fields fields, std::initializer_list<const char *> names)
{
    std::transform(names.begin(), names.end(), std::back_inserter(fields),
                   [](const char *name) { return field(name, FieldType::Single); });
    return fields;
}

SchemaTable plain(DatabaseFile file, const char *name, Fields fields, Indexes indexes = {})
{
    return {file, QString::fromLatin1(name), std::move(fields), {}, std::move(indexes)};
}

/// The key is the first field.
SchemaTable keyed(DatabaseFile file, const char *name, Fields fields, Indexes indexes = {})
{
    SchemaTable table = plain(file, name, std::move(fields), std::move(indexes));
    table.key = table.fields.front().name;
    return table;
}

SchemaTable autoKeyed(const char *name, Fields fields, Indexes indexes = {})
{
    SchemaTable table = keyed(DatabaseFile::Pest, name, std::move(fields), std::move(indexes));
    table.fields.front().autoIncrement = true;
    return table;
}

std::vector<SchemaTable> mainTables()
{
    constexpr DatabaseFile Main = DatabaseFile::Main;
    return {
        keyed(Main, "tblFarms", {number("FarmID"), text("Farm"), yesNo("isactive")}),
        keyed(Main, "tblBlock", {number("BlockID"), text("Block"), number("FarmID"), shortNumber("NoofMpoints"), yesNo("active")},
              {{"FarmID"}}),
        keyed(Main, "tblBlockPlant", {number("BlockPID"), number("BlockID"), text("PBlock"), yesNo("PBActive"), number("CrVaID")},
              {{"BlockID"}, {"CrVaID"}}),
        keyed(Main, "tblCrVariety", {number("CrVaID"), number("CrTyID"), text("Variety")}, {{"CrTyID"}}),
        keyed(Main, "tblCrType", {number("CrTyID"), number("CrGrID"), text("Type")}, {{"CrGrID"}, {"Type"}}),
        keyed(Main, "tblCrGroup", {number("CrGrID"), text("Group")}),
        keyed(Main, "tblWorker", {number("WorkerID"), text("WNickName")}),
        plain(Main, "tblYear", {text("FYear")}),
        plain(Main, "tblActiveIngredient", {number("ActInID"), text("ActiveIngredient", NoteSize)}, {{"ActiveIngredient"}}),
    };
}

std::vector<SchemaTable> monitoringTables()
{
    return {
        keyed(DatabaseFile::Pest, "tblPMMethod", {number("PMMethodID"), text("PMMethod")}),
        autoKeyed("tblPMTrans",
                  {number("PMTransID"), number("BlockID"), number("PMMethodID"), date("PMTransDate"), date("PMTransDateCom"),
                   shortNumber("PMTransWeek"), text("PMNotes", NoteSize), text("PMPerson"), shortNumber("NoofMpoints"),
                   yesNo("PMTransCom"), yesNo("PMRepeat")},
                  {{"PMTransDate"}, {"PMTransDateCom"}, {"BlockID"}}),
        plain(DatabaseFile::Pest, "tblPMBlockTrans", {number("PMTransID"), number("BlockID"), shortNumber("NoofMpoints")},
              {{"PMTransID", "BlockID"}, {"BlockID"}}),
        autoKeyed("tblPMTarTrans", {number("PMTarTransID"), number("PMTransID"), number("CTargetID")},
                  {{"PMTransID", "CTargetID"}}),
        // The largest table: each further index would slow down every save of an instruction.
        autoKeyed("tblPMData",
                  {number("PMDataID"), number("PMTransID"), number("BlockID"), number("CTargetID"), shortNumber("PMBPunt"),
                   shortNumber("PMCount"), shortNumber("PMCountUnder"), shortNumber("PMCountUpper"), yesNo("PMYes"),
                   yesNo("PMYesUnder"), yesNo("PMYesUpper")},
                  {{"PMTransID", "BlockID", "CTargetID", "PMBPunt"}, {"CTargetID", "BlockID", "PMBPunt"}}),
        autoKeyed("tblPMDataMax",
                  {number("PMDataMaxID"), number("PMTransID"), number("BlockID"), number("CTargetID"), shortNumber("PMCountMax"),
                   shortNumber("PMCountUnderMax"), shortNumber("PMCountUpperMax"), shortNumber("PMYesMax"),
                   shortNumber("PMYesUnderMax"), shortNumber("PMYesUpperMax")},
                  {{"PMTransID", "CTargetID", "BlockID"}, {"CTargetID", "BlockID"}}),
        autoKeyed("tblPMTPest", {number("PMTPestID"), number("CTargetID")}, {{"CTargetID"}}),
        autoKeyed("tblPMTBlock", {number("PMTBlockID"), number("BlockID"), shortNumber("NoofMpoints")}, {{"BlockID"}}),
        autoKeyed("tblPMTempPest", {number("PMTempPestID"), number("CTargetID")}, {{"CTargetID"}}),
        autoKeyed("tblPMTempBlock", {number("PMTempBlockID"), number("BlockID")}, {{"BlockID"}}),
    };
}

std::vector<SchemaTable> analysisTables()
{
    const auto plant = [](const char *key, const char *day, const char *part, const char *season) {
        return Fields{number(key), number("BlockPID"), date(day), text(part), text(season)};
    };
    Fields basic = singles({number("SoilBasicID"), number("BlockPID"), date("SBDate")},
                           {"SBDepth", "SBpHWater", "SBpHSuur", "SBConduct", "SBKUV", "SBClay", "SBOrganic"});
    basic.push_back(text("SBTexture"));
    SchemaTable copy =
        plain(DatabaseFile::Pest, "tblTempBlockPlant",
              {number("tBlockPID"), text("tPBlock"), number("tBlockID"), text("tBlock"), yesNo("tFlag"), yesNo("PBActive")});
    copy.optional = true;
    return {
        autoKeyed("tblLeaveAnalysis",
                  singles(plant("LeaveAnalysisID", "LADate", "LAPart", "LASeason"),
                          {"LA_N", "LA_P", "LA_K", "LA_Mg", "LA_Na", "LA_Mn", "LA_Fe", "LA_Cu", "LA_Zn", "LA_B", "LA_Ca"}),
                  {{"BlockPID"}, {"LADate"}}),
        autoKeyed("tblFruitAnalysis",
                  singles(plant("FruitAnalysisID", "FADate", "FAPart", "FASeason"),
                          {"FA_N", "FA_P", "FA_K", "FA_Mg", "FA_Na", "FA_Mn", "FA_Fe", "FA_Cu", "FA_Zn", "FA_B", "FA_Ca"}),
                  {{"BlockPID"}, {"FADate"}}),
        autoKeyed("tblSoilBasic", std::move(basic), {{"BlockPID"}, {"SBDate"}}),
        autoKeyed("tblSoilMicro",
                  singles({number("MicroID"), number("BlockPID"), date("MicroDate")},
                          {"MicroZn", "MicroB", "MicroCu", "MicroMn", "MicroFe", "MicroMo"}),
                  {{"BlockPID"}, {"MicroDate"}}),
        autoKeyed(
            "tblSoilExtraction",
            singles({number("SEExtractionID"), number("BlockPID"), date("SEDate")},
                    {"SEDepth", "SEPBray", "SEPB2", "SEPAcid", "SE_K", "SE_Ca", "SE_Na", "SE_Mg", "SE_Cl", "SE_S", "SE_Al"}),
            {{"BlockPID"}, {"SEDate"}}),
        plain(DatabaseFile::Pest, "tblFTransaction", {date("FertDate")}, {{"FertDate"}}),
        std::move(copy),
    };
}

std::vector<SchemaTable> sprayTables()
{
    constexpr DatabaseFile Spray = DatabaseFile::Spray;
    return {
        keyed(Spray, "tblCTarget", {number("CTargetID"), text("ChemTarget", NoteSize), text("CTType")},
              {{"CTType"}, {"ChemTarget"}}),
        plain(Spray, "tblTargetFType", {number("CrTyID"), number("CTargetID")}, {{"CrTyID"}, {"CTargetID"}}),
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
    for (const auto &[key, name] : {std::pair{1, "Count"}, std::pair{2, "Yes/No"}}) {
        methods.AddNew();
        methods.set(u"PMMethodID", key);
        methods.set(u"PMMethod", QString::fromLatin1(name));
        methods.Update();
    }
}

} // namespace

bool SchemaTable::hasAutoKey() const
{
    return !key.isEmpty() && fields.front().autoIncrement;
}

dao::TableDef SchemaTable::definition() const
{
    dao::TableDef table(name);
    for (const dao::Field &one : fields)
        table.Append(one);
    if (!key.isEmpty())
        table.Append(dao::Index{name + QStringLiteral("_key"), {key}, true, true});
    for (const std::vector<QString> &one : indexes) {
        QString indexName = name;
        for (const QString &fieldName : one)
            indexName += u'_' + fieldName;
        table.Append(dao::Index{indexName, one, false, false});
    }
    return table;
}

const std::vector<SchemaTable> &schema()
{
    static const std::vector<SchemaTable> tables = [] {
        std::vector<SchemaTable> all;
        for (std::vector<SchemaTable> part : {mainTables(), monitoringTables(), analysisTables(), sprayTables()})
            std::move(part.begin(), part.end(), std::back_inserter(all));
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
    return sameName(table.name, u"tblPMTrans") && sameName(field, u"PMRepeat");
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

void createDatabaseFile(DatabaseFile file, const QString &path)
{
    const std::unique_ptr<dao::Database> database = dao::Workspace::CreateDatabase(path, connectText());
    dao::WriteScope scope(*database);
    for (const SchemaTable &table : schema()) {
        if (table.file == file)
            database->Append(table.definition());
    }
    if (file == DatabaseFile::Pest)
        addMethods(*database);
    scope.commit();
}

} // namespace store
