// SPDX-License-Identifier: GPL-3.0-or-later
// Leaf, fruit and soil analyses.
#include "store/clsPestMONNew.h"

#include "store/AnalysisTables.h"
#include "store/SqlText.h"

#include <vector>

using store::AnalysisTable;
using store::Existing;
using store::FieldValue;
using store::Missing;
using store::sqlText;

namespace
{

using Key = clsPestMONNew::Key;
using SerialDate = basic::SerialDate;

void appendValues(std::vector<FieldValue> &fields, const AnalysisTable &analysis, std::span<const float> values)
{
    for (const store::AnalysisValueField &field : analysis.values) {
        fields.push_back({field.name, static_cast<double>(values[field.argument])});
    }
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
        key = store::appendRow(database, store::LeaveAnalysis.table,
                               plantFields(store::LeaveAnalysis, planting, date, part, season, values));
    });
}

clsPestMONNew::Status clsPestMONNew::Add_Fruit_Analysis(Key &key, Key planting, SerialDate date, const QString &part,
                                                        const QString &season, const PlantValues &values)
{
    return write([&](dao::Database &database) {
        key = store::appendRow(database, store::FruitAnalysis.table,
                               plantFields(store::FruitAnalysis, planting, date, part, season, values));
    });
}

clsPestMONNew::Status clsPestMONNew::Save_Leave_Analysis(Key &key, Key planting, SerialDate date, const QString &part,
                                                         const QString &season, const PlantValues &values)
{
    return write([&](dao::Database &database) {
        saveFound(database, store::LeaveAnalysis, key, plantFields(store::LeaveAnalysis, planting, date, part, season, values));
    });
}

clsPestMONNew::Status clsPestMONNew::Save_Fruit_Analysis(Key &key, Key planting, SerialDate date, const QString &part,
                                                         const QString &season, const PlantValues &values)
{
    return write([&](dao::Database &database) {
        saveFound(database, store::FruitAnalysis, key, plantFields(store::FruitAnalysis, planting, date, part, season, values));
    });
}

clsPestMONNew::Status clsPestMONNew::Save_Soil_Analysis_Basic(Key &key, Key planting, SerialDate date,
                                                              const std::array<float, 7> &values, const QString &texture)
{
    return write([&](dao::Database &database) {
        std::vector<FieldValue> fields = soilFields(store::SoilBasicAnalysis, planting, date, values);
        fields.push_back({store::SoilBasicAnalysis.texture, texture});
        saveOrAdd(database, store::SoilBasicAnalysis, key, fields);
    });
}

clsPestMONNew::Status clsPestMONNew::Save_Soil_Analysis_Micro(Key &key, Key planting, SerialDate date,
                                                              const std::array<float, 6> &values)
{
    return write([&](dao::Database &database) {
        saveOrAdd(database, store::SoilMicroAnalysis, key, soilFields(store::SoilMicroAnalysis, planting, date, values));
    });
}

clsPestMONNew::Status clsPestMONNew::Save_Soil_Analysis_Extraction(Key &key, Key planting, SerialDate date,
                                                                   const std::array<float, 11> &values)
{
    return write([&](dao::Database &database) {
        saveOrAdd(database, store::SoilExtractionAnalysis, key,
                  soilFields(store::SoilExtractionAnalysis, planting, date, values));
    });
}

clsPestMONNew::Status clsPestMONNew::Delete_Leave_Analysis(Key &key)
{
    return deleteFirst(store::LeaveAnalysis.table, sqlText(store::LeaveAnalysis.table.key, u" =", key));
}

clsPestMONNew::Status clsPestMONNew::Delete_Fruit_Analysis(Key &key)
{
    return deleteFirst(store::FruitAnalysis.table, sqlText(store::FruitAnalysis.table.key, u" =", key));
}

clsPestMONNew::Status clsPestMONNew::Delete_Soil_Analysis_Basic(Key &key)
{
    return deleteFirst(store::SoilBasicAnalysis.table, sqlText(store::SoilBasicAnalysis.table.key, u" =", key));
}

clsPestMONNew::Status clsPestMONNew::Delete_Soil_Analysis_Micro(Key &key)
{
    return deleteFirst(store::SoilMicroAnalysis.table, sqlText(store::SoilMicroAnalysis.table.key, u" =", key));
}

clsPestMONNew::Status clsPestMONNew::Delete_Soil_Analysis_Extract(Key &key)
{
    return deleteFirst(store::SoilExtractionAnalysis.table, sqlText(store::SoilExtractionAnalysis.table.key, u" =", key));
}

dao::Recordset clsPestMONNew::Get_MonSoilBasic_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return pestRows(periodSql(store::SoilBasicAnalysis, from, to, planting, session_.ShowActive));
}

dao::Recordset clsPestMONNew::Get_MonSoilMicro_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return pestRows(periodSql(store::SoilMicroAnalysis, from, to, planting, session_.ShowActive));
}

dao::Recordset clsPestMONNew::Get_MonSoilExtract_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return pestRows(periodSql(store::SoilExtractionAnalysis, from, to, planting, session_.ShowActive));
}

dao::Recordset clsPestMONNew::Get_MonLeave_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return pestRows(periodSql(store::LeaveAnalysis, from, to, planting, session_.ShowActive));
}

dao::Recordset clsPestMONNew::Get_MonFruit_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return pestRows(periodSql(store::FruitAnalysis, from, to, planting, session_.ShowActive));
}

dao::Recordset clsPestMONNew::Get_MonSoilBasic_byID(Key key)
{
    return pestRows(store::rowByKey(store::SoilBasicAnalysis.table, key));
}

dao::Recordset clsPestMONNew::Get_MonSoilMicro_byID(Key key)
{
    return pestRows(store::rowByKey(store::SoilMicroAnalysis.table, key));
}

dao::Recordset clsPestMONNew::Get_MonLeave_byID(Key key)
{
    return pestRows(store::rowByKey(store::LeaveAnalysis.table, key));
}

dao::Recordset clsPestMONNew::Get_MonSoilExtract_byID(Key key)
{
    return pestRows(store::rowByKey(store::SoilExtractionAnalysis.table, key));
}

dao::Recordset clsPestMONNew::Get_FertTransactions_for_Period(SerialDate from, SerialDate to)
{
    return pestRows(sqlText(u"Select * from tblFTransaction where tblFTransaction.FertDate >= ", from,
                            u" and tblFTransaction.FertDate <= ", to));
}
