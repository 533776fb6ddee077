// SPDX-License-Identifier: GPL-3.0-or-later
// Leaf, fruit and soil analyses: five tables that differ in names and in the number of values.
#include "store/clsPestMONNew.h"

#include "store/Rows.h"
#include "store/SqlText.h"

#include <span>
#include <vector>

using store::Existing;
using store::FieldValue;
using store::KeyedTable;
using store::Missing;
using store::sqlText;

namespace
{

using Key = clsPestMONNew::Key;
using SerialDate = basic::SerialDate;

struct AnalysisTable {
    KeyedTable table;
    QStringView date;
    std::span<const QStringView> values;
    /// Plant analyses only.
    QStringView part = {};
    QStringView season = {};
};

constexpr std::array<QStringView, 11> LeaveValues{u"LA_N",  u"LA_P",  u"LA_K",  u"LA_Mg", u"LA_Na", u"LA_Mn",
                                                  u"LA_Fe", u"LA_Cu", u"LA_Zn", u"LA_B",  u"LA_Ca"};
constexpr std::array<QStringView, 11> FruitValues{u"FA_N",  u"FA_P",  u"FA_K",  u"FA_Mg", u"FA_Na", u"FA_Mn",
                                                  u"FA_Fe", u"FA_Cu", u"FA_Zn", u"FA_B",  u"FA_Ca"};
constexpr std::array<QStringView, 7> SoilBasicValues{u"SBDepth", u"SBpHWater", u"SBpHSuur", u"SBConduct",
                                                     u"SBKUV",   u"SBClay",    u"SBOrganic"};
constexpr std::array<QStringView, 6> SoilMicroValues{u"MicroZn", u"MicroB", u"MicroCu", u"MicroMn", u"MicroFe", u"MicroMo"};
constexpr std::array<QStringView, 11> SoilExtractionValues{u"SEDepth", u"SEPBray", u"SEPB2", u"SEPAcid", u"SE_K", u"SE_Ca",
                                                           u"SE_Na",   u"SE_Mg",   u"SE_Cl", u"SE_S",    u"SE_Al"};

constexpr AnalysisTable Leave{{u"tblLeaveAnalysis", u"LeaveAnalysisID"}, u"LADate", LeaveValues, u"LAPart", u"LASeason"};
constexpr AnalysisTable Fruit{{u"tblFruitAnalysis", u"FruitAnalysisID"}, u"FADate", FruitValues, u"FAPart", u"FASeason"};
constexpr AnalysisTable SoilBasic{{u"tblSoilBasic", u"SoilBasicID"}, u"SBDate", SoilBasicValues};
constexpr AnalysisTable SoilMicro{{u"tblSoilMicro", u"MicroID"}, u"MicroDate", SoilMicroValues};
constexpr AnalysisTable SoilExtraction{{u"tblSoilExtraction", u"SEExtractionID"}, u"SEDate", SoilExtractionValues};

std::vector<FieldValue> analysisFields(const AnalysisTable &analysis, Key planting, SerialDate date,
                                       std::span<const float> values)
{
    std::vector<FieldValue> fields{{u"BlockPID", planting}, {analysis.date, date}};
    for (std::size_t i = 0; i < values.size(); ++i)
        fields.push_back({analysis.values[i], static_cast<double>(values[i])});
    return fields;
}

std::vector<FieldValue> plantFields(const AnalysisTable &analysis, Key planting, SerialDate date, const QString &part,
                                    const QString &season, std::span<const float> values)
{
    std::vector<FieldValue> fields = analysisFields(analysis, planting, date, values);
    fields.push_back({analysis.part, part});
    fields.push_back({analysis.season, season});
    return fields;
}

void saveFound(dao::Database &database, const AnalysisTable &analysis, Key &key, const std::vector<FieldValue> &fields)
{
    store::writeRow(database, store::rowByKey(analysis.table, key), Existing::Edit, Missing::LeaveAlone, fields);
}

void saveOrAdd(dao::Database &database, const AnalysisTable &analysis, Key &key, const std::vector<FieldValue> &fields)
{
    key =
        store::writeRow(database, store::rowByKey(analysis.table, key), Existing::Edit, Missing::Add, fields, analysis.table.key);
}

QString periodSql(const AnalysisTable &analysis, SerialDate from, SerialDate to, Key planting, std::int32_t showActive)
{
    const QStringView table = analysis.table.name;
    const QString onePlanting = planting == 0 ? QString() : sqlText(u" and ", table, u".BlockPID = ", planting);
    return sqlText(u"SELECT ", table, u".*, tblTempBlockPlant.tPBlock FROM tblTempBlockPlant INNER JOIN ", table,
                   u" ON tblTempBlockPlant.tBlockPID = ", table, u".BlockPID  where ", table, u".", analysis.date, u" >= ", from,
                   u" and ", table, u".", analysis.date, u" <= ", to, onePlanting, u" and tblTempBlockPlant.PBActive = ",
                   showActive, u" order by tblTempBlockPlant!tPBlock, ", table, u".", analysis.date, u", ", table, u".",
                   analysis.table.key);
}

} // namespace

clsPestMONNew::Status clsPestMONNew::Add_Leave_Analysis(Key &key, Key planting, SerialDate date, const QString &part,
                                                        const QString &season, const PlantValues &values)
{
    return write([&](dao::Database &database) {
        key = store::addRow(database, Leave.table, plantFields(Leave, planting, date, part, season, values));
    });
}

clsPestMONNew::Status clsPestMONNew::Add_Fruit_Analysis(Key &key, Key planting, SerialDate date, const QString &part,
                                                        const QString &season, const PlantValues &values)
{
    return write([&](dao::Database &database) {
        key = store::addRow(database, Fruit.table, plantFields(Fruit, planting, date, part, season, values));
    });
}

clsPestMONNew::Status clsPestMONNew::Save_Leave_Analysis(Key &key, Key planting, SerialDate date, const QString &part,
                                                         const QString &season, const PlantValues &values)
{
    return write([&](dao::Database &database) {
        saveFound(database, Leave, key, plantFields(Leave, planting, date, part, season, values));
    });
}

clsPestMONNew::Status clsPestMONNew::Save_Fruit_Analysis(Key &key, Key planting, SerialDate date, const QString &part,
                                                         const QString &season, const PlantValues &values)
{
    return write([&](dao::Database &database) {
        saveFound(database, Fruit, key, plantFields(Fruit, planting, date, part, season, values));
    });
}

clsPestMONNew::Status clsPestMONNew::Save_Soil_Analysis_Basic(Key &key, Key planting, SerialDate date,
                                                              const std::array<float, 7> &values, const QString &texture)
{
    return write([&](dao::Database &database) {
        std::vector<FieldValue> fields = analysisFields(SoilBasic, planting, date, values);
        fields.push_back({u"SBTexture", texture});
        saveOrAdd(database, SoilBasic, key, fields);
    });
}

clsPestMONNew::Status clsPestMONNew::Save_Soil_Analysis_Micro(Key &key, Key planting, SerialDate date,
                                                              const std::array<float, 6> &values)
{
    return write(
        [&](dao::Database &database) { saveOrAdd(database, SoilMicro, key, analysisFields(SoilMicro, planting, date, values)); });
}

clsPestMONNew::Status clsPestMONNew::Save_Soil_Analysis_Extraction(Key &key, Key planting, SerialDate date,
                                                                   const std::array<float, 11> &values)
{
    return write([&](dao::Database &database) {
        saveOrAdd(database, SoilExtraction, key, analysisFields(SoilExtraction, planting, date, values));
    });
}

clsPestMONNew::Status clsPestMONNew::Delete_Leave_Analysis(Key &key)
{
    return deleteFirst(Leave.table, sqlText(Leave.table.key, u" =", key));
}

clsPestMONNew::Status clsPestMONNew::Delete_Fruit_Analysis(Key &key)
{
    return deleteFirst(Fruit.table, sqlText(Fruit.table.key, u" =", key));
}

clsPestMONNew::Status clsPestMONNew::Delete_Soil_Analysis_Basic(Key &key)
{
    return deleteFirst(SoilBasic.table, sqlText(SoilBasic.table.key, u" =", key));
}

clsPestMONNew::Status clsPestMONNew::Delete_Soil_Analysis_Micro(Key &key)
{
    return deleteFirst(SoilMicro.table, sqlText(SoilMicro.table.key, u" =", key));
}

clsPestMONNew::Status clsPestMONNew::Delete_Soil_Analysis_Extract(Key &key)
{
    return deleteFirst(SoilExtraction.table, sqlText(SoilExtraction.table.key, u" =", key));
}

dao::Recordset clsPestMONNew::Get_MonSoilBasic_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return pestRows(periodSql(SoilBasic, from, to, planting, session_.ShowActive));
}

dao::Recordset clsPestMONNew::Get_MonSoilMicro_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return pestRows(periodSql(SoilMicro, from, to, planting, session_.ShowActive));
}

dao::Recordset clsPestMONNew::Get_MonSoilExtract_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return pestRows(periodSql(SoilExtraction, from, to, planting, session_.ShowActive));
}

dao::Recordset clsPestMONNew::Get_MonLeave_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return pestRows(periodSql(Leave, from, to, planting, session_.ShowActive));
}

dao::Recordset clsPestMONNew::Get_MonFruit_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return pestRows(periodSql(Fruit, from, to, planting, session_.ShowActive));
}

dao::Recordset clsPestMONNew::Get_MonSoilBasic_byID(Key key)
{
    return pestRows(store::rowByKey(SoilBasic.table, key));
}

dao::Recordset clsPestMONNew::Get_MonSoilMicro_byID(Key key)
{
    return pestRows(store::rowByKey(SoilMicro.table, key));
}

dao::Recordset clsPestMONNew::Get_MonLeave_byID(Key key)
{
    return pestRows(store::rowByKey(Leave.table, key));
}

dao::Recordset clsPestMONNew::Get_MonSoilExtract_byID(Key key)
{
    return pestRows(store::rowByKey(SoilExtraction.table, key));
}

dao::Recordset clsPestMONNew::Get_FertTransactions_for_Period(SerialDate from, SerialDate to)
{
    return pestRows(sqlText(u"Select * from tblFTransaction where tblFTransaction.FertDate >= ", from,
                            u" and tblFTransaction.FertDate <= ", to));
}
