// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/AnalysisOperations.h"

#include "store/AnalysisTables.h"
#include "store/SqlText.h"

#include <vector>

namespace store
{

namespace
{

void appendValues(std::vector<FieldValue> &fields, const AnalysisTable &analysis, std::span<const float> values)
{
    for (const AnalysisValueField &field : analysis.values) {
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
    writeRow(database, rowByKey(analysis.table, key), Existing::Edit, Missing::LeaveAlone, fields);
}

void saveOrAdd(dao::Database &database, const AnalysisTable &analysis, Key &key, const std::vector<FieldValue> &fields)
{
    key = writeRow(database, rowByKey(analysis.table, key), Existing::Edit, Missing::Add, fields, analysis.table.key);
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

Status AnalysisOperations::Add_Leave_Analysis(Key &key, Key planting, SerialDate date, const QString &part, const QString &season,
                                              const PlantValues &values)
{
    return access_.write([&](dao::Database &database) {
        key = appendRow(database, LeaveAnalysis.table, plantFields(LeaveAnalysis, planting, date, part, season, values));
    });
}

Status AnalysisOperations::Add_Fruit_Analysis(Key &key, Key planting, SerialDate date, const QString &part, const QString &season,
                                              const PlantValues &values)
{
    return access_.write([&](dao::Database &database) {
        key = appendRow(database, FruitAnalysis.table, plantFields(FruitAnalysis, planting, date, part, season, values));
    });
}

Status AnalysisOperations::Save_Leave_Analysis(Key &key, Key planting, SerialDate date, const QString &part,
                                               const QString &season, const PlantValues &values)
{
    return access_.write([&](dao::Database &database) {
        saveFound(database, LeaveAnalysis, key, plantFields(LeaveAnalysis, planting, date, part, season, values));
    });
}

Status AnalysisOperations::Save_Fruit_Analysis(Key &key, Key planting, SerialDate date, const QString &part,
                                               const QString &season, const PlantValues &values)
{
    return access_.write([&](dao::Database &database) {
        saveFound(database, FruitAnalysis, key, plantFields(FruitAnalysis, planting, date, part, season, values));
    });
}

Status AnalysisOperations::Save_Soil_Analysis_Basic(Key &key, Key planting, SerialDate date, const std::array<float, 7> &values,
                                                    const QString &texture)
{
    return access_.write([&](dao::Database &database) {
        std::vector<FieldValue> fields = soilFields(SoilBasicAnalysis, planting, date, values);
        fields.push_back({SoilBasicAnalysis.texture, texture});
        saveOrAdd(database, SoilBasicAnalysis, key, fields);
    });
}

Status AnalysisOperations::Save_Soil_Analysis_Micro(Key &key, Key planting, SerialDate date, const std::array<float, 6> &values)
{
    return access_.write([&](dao::Database &database) {
        saveOrAdd(database, SoilMicroAnalysis, key, soilFields(SoilMicroAnalysis, planting, date, values));
    });
}

Status AnalysisOperations::Save_Soil_Analysis_Extraction(Key &key, Key planting, SerialDate date,
                                                         const std::array<float, 11> &values)
{
    return access_.write([&](dao::Database &database) {
        saveOrAdd(database, SoilExtractionAnalysis, key, soilFields(SoilExtractionAnalysis, planting, date, values));
    });
}

Status AnalysisOperations::Delete_Leave_Analysis(Key &key)
{
    return access_.deleteFirst(LeaveAnalysis.table, sqlText(LeaveAnalysis.table.key, u" =", key));
}

Status AnalysisOperations::Delete_Fruit_Analysis(Key &key)
{
    return access_.deleteFirst(FruitAnalysis.table, sqlText(FruitAnalysis.table.key, u" =", key));
}

Status AnalysisOperations::Delete_Soil_Analysis_Basic(Key &key)
{
    return access_.deleteFirst(SoilBasicAnalysis.table, sqlText(SoilBasicAnalysis.table.key, u" =", key));
}

Status AnalysisOperations::Delete_Soil_Analysis_Extract(Key &key)
{
    return access_.deleteFirst(SoilExtractionAnalysis.table, sqlText(SoilExtractionAnalysis.table.key, u" =", key));
}

Recordset AnalysisOperations::Get_MonSoilBasic_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return access_.pestRows(periodSql(SoilBasicAnalysis, from, to, planting, access_.session().ShowActive));
}

Recordset AnalysisOperations::Get_MonSoilMicro_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return access_.pestRows(periodSql(SoilMicroAnalysis, from, to, planting, access_.session().ShowActive));
}

Recordset AnalysisOperations::Get_MonSoilExtract_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return access_.pestRows(periodSql(SoilExtractionAnalysis, from, to, planting, access_.session().ShowActive));
}

Recordset AnalysisOperations::Get_MonLeave_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return access_.pestRows(periodSql(LeaveAnalysis, from, to, planting, access_.session().ShowActive));
}

Recordset AnalysisOperations::Get_MonFruit_for_Period(SerialDate from, SerialDate to, Key planting)
{
    return access_.pestRows(periodSql(FruitAnalysis, from, to, planting, access_.session().ShowActive));
}

} // namespace store
