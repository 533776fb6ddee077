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

/// A field and the place of its value among the arguments, counted from 0. Rows stand in the order of writing.
struct ValueField {
    QStringView name;
    std::size_t argument;
};

struct AnalysisTable {
    KeyedTable table;
    QStringView date;
    std::span<const ValueField> values;
    /// Plant analyses only.
    QStringView part = {};
    QStringView season = {};
};

constexpr std::array<ValueField, 11> LeaveValues{{{u"LA_N", 0},
                                                  {u"LA_P", 1},
                                                  {u"LA_K", 2},
                                                  {u"LA_Mg", 4},
                                                  {u"LA_Na", 5},
                                                  {u"LA_Mn", 6},
                                                  {u"LA_Fe", 7},
                                                  {u"LA_Cu", 8},
                                                  {u"LA_Zn", 9},
                                                  {u"LA_B", 10},
                                                  {u"LA_Ca", 3}}};
constexpr std::array<ValueField, 11> FruitValues{{{u"FA_N", 0},
                                                  {u"FA_P", 1},
                                                  {u"FA_K", 2},
                                                  {u"FA_Mg", 4},
                                                  {u"FA_Na", 5},
                                                  {u"FA_Mn", 6},
                                                  {u"FA_Fe", 7},
                                                  {u"FA_Cu", 8},
                                                  {u"FA_Zn", 9},
                                                  {u"FA_B", 10},
                                                  {u"FA_Ca", 3}}};
constexpr std::array<ValueField, 7> SoilBasicValues{
    {{u"SBDepth", 0}, {u"SBpHWater", 1}, {u"SBpHSuur", 2}, {u"SBConduct", 3}, {u"SBKUV", 4}, {u"SBClay", 5}, {u"SBOrganic", 6}}};
constexpr std::array<ValueField, 6> SoilMicroValues{
    {{u"MicroZn", 0}, {u"MicroB", 2}, {u"MicroCu", 1}, {u"MicroMn", 3}, {u"MicroFe", 4}, {u"MicroMo", 5}}};
constexpr std::array<ValueField, 11> SoilExtractionValues{{{u"SEDepth", 0},
                                                           {u"SEPBray", 1},
                                                           {u"SEPB2", 10},
                                                           {u"SEPAcid", 2},
                                                           {u"SE_K", 3},
                                                           {u"SE_Ca", 4},
                                                           {u"SE_Na", 5},
                                                           {u"SE_Mg", 6},
                                                           {u"SE_Cl", 7},
                                                           {u"SE_S", 8},
                                                           {u"SE_Al", 9}}};

constexpr AnalysisTable Leave{{u"tblLeaveAnalysis", u"LeaveAnalysisID"}, u"LADate", LeaveValues, u"LAPart", u"LASeason"};
constexpr AnalysisTable Fruit{{u"tblFruitAnalysis", u"FruitAnalysisID"}, u"FADate", FruitValues, u"FAPart", u"FASeason"};
constexpr AnalysisTable SoilBasic{{u"tblSoilBasic", u"SoilBasicID"}, u"SBDate", SoilBasicValues};
constexpr AnalysisTable SoilMicro{{u"tblSoilMicro", u"MicroID"}, u"MicroDate", SoilMicroValues};
constexpr AnalysisTable SoilExtraction{{u"tblSoilExtraction", u"SEExtractionID"}, u"SEDate", SoilExtractionValues};

void appendValues(std::vector<FieldValue> &fields, const AnalysisTable &analysis, std::span<const float> values)
{
    for (const ValueField &field : analysis.values)
        fields.push_back({field.name, static_cast<double>(values[field.argument])});
}

std::vector<FieldValue> soilFields(const AnalysisTable &analysis, Key planting, SerialDate date, std::span<const float> values)
{
    std::vector<FieldValue> fields{{u"BlockPID", planting}, {analysis.date, date}};
    appendValues(fields, analysis, values);
    return fields;
}

std::vector<FieldValue> plantFields(const AnalysisTable &analysis, Key planting, SerialDate date, const QString &part,
                                    const QString &season, std::span<const float> values)
{
    std::vector<FieldValue> fields{
        {u"BlockPID", planting}, {analysis.date, date}, {analysis.part, part}, {analysis.season, season}};
    appendValues(fields, analysis, values);
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
        key = store::appendRow(database, Leave.table, plantFields(Leave, planting, date, part, season, values));
    });
}

clsPestMONNew::Status clsPestMONNew::Add_Fruit_Analysis(Key &key, Key planting, SerialDate date, const QString &part,
                                                        const QString &season, const PlantValues &values)
{
    return write([&](dao::Database &database) {
        key = store::appendRow(database, Fruit.table, plantFields(Fruit, planting, date, part, season, values));
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
        std::vector<FieldValue> fields = soilFields(SoilBasic, planting, date, values);
        fields.push_back({u"SBTexture", texture});
        saveOrAdd(database, SoilBasic, key, fields);
    });
}

clsPestMONNew::Status clsPestMONNew::Save_Soil_Analysis_Micro(Key &key, Key planting, SerialDate date,
                                                              const std::array<float, 6> &values)
{
    return write(
        [&](dao::Database &database) { saveOrAdd(database, SoilMicro, key, soilFields(SoilMicro, planting, date, values)); });
}

clsPestMONNew::Status clsPestMONNew::Save_Soil_Analysis_Extraction(Key &key, Key planting, SerialDate date,
                                                                   const std::array<float, 11> &values)
{
    return write([&](dao::Database &database) {
        saveOrAdd(database, SoilExtraction, key, soilFields(SoilExtraction, planting, date, values));
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
