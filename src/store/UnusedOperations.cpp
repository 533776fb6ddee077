// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/UnusedOperations.h"

#include "platform/basic/Numbers.h"
#include "store/AnalysisTables.h"
#include "store/ReferenceSql.h"
#include "store/SqlText.h"

namespace store
{

namespace
{

QString instructionsOfYear(QStringView tables, const QString &condition, Key method, int year)
{
    return sqlText(u"Select *, tblPMTrans.PMTransID as PMTransIDD from ", tables, u" where ", condition,
                   u" and tblPMTrans.PMMethodID = ", method, u" and Datepart('yyyy', tblPMTrans.PMTransDate) =", year,
                   u" order by PMTransDate asc, tblPMTrans.PMTransID asc");
}

constexpr QStringView ByPointAndKey = u"tblPMData.PMBPunt asc, tblPMData.PMDataID asc";

} // namespace

Recordset UnusedOperations::Get_Worker_byID(Key worker)
{
    return access_.mainRows(sqlText(u"Select * from tblWorker where tblWorker.WorkerID = ", worker));
}

Recordset UnusedOperations::Get_Years()
{
    return access_.mainRows(sqlText(u"Select * from tblYear order by FYear asc"));
}

Recordset UnusedOperations::Get_CropGroup()
{
    return access_.mainRows(sqlText(u"Select * from tblCrGroup order by CrGrID"));
}

Recordset UnusedOperations::GetCrGroup_byID(Key group)
{
    return access_.pestRows(sqlText(u"Select * from tblCrGroup where CrGrID = ", group));
}

Recordset UnusedOperations::Get_CropType_for_Group(Key group)
{
    return access_.mainRows(sqlText(u"Select * from tblCrType where tblCrType.CrGrID = ", group, u" order by CrTyID"));
}

Recordset UnusedOperations::Get_CropType_for_Group_for_Farm()
{
    return access_.mainRows(sqlText(
        u"Select * from tblCrType where CrTyID in (Select CrTyID from tblCrVariety where CrVaID in (Select CrVaID"
        u" from tblBlockPlant, tblBlock where tblBlockPlant.BlockID = tblBlock.BlockID and tblBlock.FarmID = ",
        access_.session().CurrentFarmID, u")) and tblCrType.CrGrID =", access_.session().FilterCrGrID, u" order by CrTyID"));
}

Key UnusedOperations::CrTyID_Is(const QString &name)
{
    return firstNumber(access_.mainRows(sqlText(u"Select * from tblCrType where tblCrType.Type = '", name, u"' ")), u"CrTyID");
}

Recordset UnusedOperations::GetCrVariety_Combo()
{
    return access_.mainRows(sqlText(u"Select * from tblCrVariety order by CrVaID"));
}

Recordset UnusedOperations::Get_Blocks_for_Farms(Key farm)
{
    return access_.mainRows(
        sqlText(u"Select * from tblBlock where tblBlock.FarmID = ", farm, u" order by Block asc, BlockID asc"));
}

Key UnusedOperations::BigBlock_ID(Key planting)
{
    return firstNumber(access_.mainRows(sqlText(u"Select * from tblBlockPlant where BlockPID =", planting)), u"BlockID");
}

QString UnusedOperations::BigBlock_Name(Key block)
{
    return firstText(access_.mainRows(sqlText(u"Select * from tblBlock where BlockID =", block)), u"Block");
}

QString UnusedOperations::PlantBlock_Name(Key planting)
{
    return firstText(access_.mainRows(sqlText(u"Select * from tblBlockPlant where BlockPID =", planting)), u"PBlock");
}

Recordset UnusedOperations::Get_BlockPlant_for_Blocks(Key block)
{
    return access_.mainRows(
        sqlText(u"Select * from tblBlockPlant where tblBlockPlant.BlockID = ", block, u" order by PBlock asc, BlockPID asc"));
}

Recordset UnusedOperations::Get_BlockPlant_for_Blocks_Active(Key block)
{
    return access_.mainRows(sqlText(u"Select * from tblBlockPlant where tblBlockPlant.BlockID = ", block,
                                    u" and tblBlockPlant.PBActive = -1 order by PBlock asc, BlockPID asc"));
}

Recordset UnusedOperations::Get_BlocksPlant_Variety_for_Block_new(Key planting)
{
    return access_.mainRows(plantingsWithVariety(EveryField, sqlText(u" and tblBlockPlant.BlockPID =", planting),
                                                 sqlText(access_.session().ShowActive))
                                .append(ByVariety));
}

Recordset UnusedOperations::Get_ChemTarget()
{
    return access_.sprayRows(sqlText(u"Select * from tblCTarget order by tblCTarget.ChemTarget asc, tblCTarget.CTargetID asc"));
}

Key UnusedOperations::CTargetID_Is(const QString &name)
{
    return firstNumber(access_.mainRows(sqlText(u"Select * from tblCTarget where tblCTarget.ChemTarget = '", name, u"' ")),
                       u"CTargetID");
}

Key UnusedOperations::ActiveIngredientID_Is(const QString &name)
{
    return firstNumber(access_.mainRows(sqlText(
                           u"Select * from tblActiveIngredient where tblActiveIngredient.ActiveIngredient = '", name, u"' ")),
                       u"ActInID");
}

Recordset UnusedOperations::Get_Pests_for_FruitType(Key type, const QString &kind)
{
    Recordset rows = access_.sprayRows(
        targetsSql(u"tblTargetFType, ",
                   sqlText(u" where tblTargetFType.CrTyID =", type,
                           u" and tblTargetFType.CTargetID = tblCTarget.CTargetID and tblCTarget.CTType ='", kind, u"'")));
    if (!rows.Eof()) {
        access_.RecordTotal = rows.RecordCount();
    }
    return rows;
}

Recordset UnusedOperations::Get_PMTrans(Key instruction)
{
    return access_.pestRows(sqlText(u"Select * from tblPMTrans where tblPMTrans.pmtransID = ", instruction));
}

Recordset UnusedOperations::Get_PestTransaction_For_Block(Key block)
{
    return access_.pestRows(
        rowsWhere(u"tblPMTrans", sqlText(u"tblPMTrans.BlockID = ", block), u"PMTransDate asc, PMTransID asc"));
}

Recordset UnusedOperations::Get_PestTransaction_For_BlockMethodYear(Key block, Key method, int year)
{
    return access_.pestRows(instructionsOfYear(u"tblPMTrans", sqlText(u"tblPMTrans.BlockID = ", block), method, year));
}

Recordset UnusedOperations::New_Get_PestTransaction_For_BlockMethodYear(Key block, Key method, int year)
{
    return access_.pestRows(instructionsOfYear(
        u"tblPMTrans, tblPMBlockTrans",
        sqlText(u"tblPMBlockTrans.BlockID = ", block, u" and tblPMBlockTrans.PMtransID = tblPMTrans.PMTransID"), method, year));
}

Recordset UnusedOperations::Get_Pests_Trans(Key instruction, Key target)
{
    return access_.pestRows(rowsWhere(
        u"tblPMTarTrans", sqlText(u"tblPMTarTrans.pmtransID = ", instruction, u" and tblPMTarTrans.CTargetID = ", target),
        u"PMTarTransID"));
}

Recordset UnusedOperations::Get_Pests_For_Report()
{
    return access_.pestRows(rowsWhere(u"tblPMTempPest", {}, u"tblPMTempPest.CTargetID asc, PMTempPestID asc"));
}

Recordset UnusedOperations::Get_Blocks_For_Report()
{
    return access_.pestRows(rowsWhere(u"tblPMTempBlock", {}, u"tblPMTempBlock.BlockID asc, PMTempBlockID asc"));
}

Recordset UnusedOperations::Fill_Pests_For_Report(Key target)
{
    return access_.pestRows(rowsWhere(u"tblPMTempPest", sqlText(u"tblPMTempPest.CTargetID =", target), u"PMTempPestID"));
}

Recordset UnusedOperations::Fill_Blocks_For_Report(Key block)
{
    return access_.pestRows(rowsWhere(u"tblPMTempBlock", sqlText(u"tblPMTempBlock.BlockID =", block), u"PMTempBlockID"));
}

Recordset UnusedOperations::Get_PestData_for_Transaction(Int16 point, Key target, Key instruction)
{
    return access_.pestRows(
        dataRows({.target = target, .block = {}, .instruction = instruction, .point = point}, u"tblPMData.PMDataID"));
}

Recordset UnusedOperations::New_Get_PestData_for_Transaction(Key instruction, Key block, Key target, Int16 point)
{
    return access_.pestRows(
        dataRows({.target = target, .block = block, .instruction = instruction, .point = point}, u"tblPMData.PMDataID"));
}

Recordset UnusedOperations::Get_GRAF_PestData_Count_for_Points(Key target, Key instruction)
{
    return access_.pestRows(dataRows({.target = target, .block = {}, .instruction = instruction, .point = {}}, ByPointAndKey));
}

Recordset UnusedOperations::New_Get_GRAF_PestData_Count_for_Points(Key block, Key target, Key instruction)
{
    return access_.pestRows(dataRows({.target = target, .block = block, .instruction = instruction, .point = {}}, ByPointAndKey));
}

Recordset UnusedOperations::Get_PestDataMax_for_Transaction(Key target, Key instruction)
{
    return access_.pestRows(totalRows({.target = target, .block = {}, .instruction = instruction, .point = {}}));
}

Recordset UnusedOperations::Get_PestData_Points_Transaction(Key instruction)
{
    return access_.pestRows(pointsOf({.target = {}, .block = {}, .instruction = instruction, .point = {}}));
}

Recordset UnusedOperations::New_Get_PestData_Points_TransBlock(Key instruction, Key block)
{
    return access_.pestRows(pointsOf({.target = {}, .block = block, .instruction = instruction, .point = {}}));
}

Int16 UnusedOperations::New_No_of_MonPoints(Key instruction, Key block)
{
    const Recordset rows = access_.pestRows(sqlText(u"Select * from tblPMBlockTrans where tblPMBlockTrans.PMTransID =",
                                                    instruction, u" and tblPMBlockTrans.BlockID =", block));
    return rows.Eof() ? Int16{0} : basic::toInteger16(rows.longValue(u"NoofMpoints"));
}

Recordset UnusedOperations::Method_Used(Key instruction)
{
    return access_.pestRows(sqlText(u"Select distinct PMMethodID from tblPMData where tblPMData.PMTransID =", instruction));
}

Recordset UnusedOperations::Get_Methods_Used(Key instruction, Key target)
{
    return access_.pestRows(sqlText(u"Select distinct TargetID from tblPMData where tblPMData.PMTransID =", instruction,
                                    u" and tblPMData.TargetID = ", target));
}

Status UnusedOperations::Add_PMTrans(Key &PMTransID, Key block, Key method, SerialDate issued, const QString &notes,
                                     const QString &person, Int16 points, Int16 week, bool completed, bool repeat)
{
    return access_.write([&](dao::Database &database) {
        const std::array<FieldValue, 9> fields{{{u"BlockID", block},
                                                {u"PMMethodID", method},
                                                {u"PMTransDate", issued},
                                                {u"PMNotes", notes},
                                                {u"PMPerson", person},
                                                {u"NoofMpoints", std::int32_t{points}},
                                                {u"PMTransWeek", std::int32_t{week}},
                                                {u"PMTransCom", completed},
                                                {u"PMRepeat", repeat}}};
        PMTransID = addRow(database, PMTrans, fields);
    });
}

Status UnusedOperations::Add_PestData(Key instruction, Key target, Int16 point, const PointValues &values)
{
    return access_.write([&](dao::Database &database) {
        addRow(database, PMData,
               selectFields({{u"PMTransID", instruction}, {u"CTargetID", target}, {u"PMBPunt", std::int32_t{point}}},
                            sixFields(values), AllFields));
    });
}

Status UnusedOperations::Add_PestDataMax(Key instruction, Key target, const TotalValues &values)
{
    return access_.write([&](dao::Database &database) {
        addRow(database, PMDataMax,
               selectFields({{u"PMTransID", instruction}, {u"CTargetID", target}}, sixFields(values), AllFields));
    });
}

// The four selection tables and the pairs of an instruction: the table, its fields, and nothing else differs.

Status UnusedOperations::Add_Pest_for_Report(Key target)
{
    return access_.write([&](dao::Database &database) { addRow(database, PMTempPest, oneField(u"CTargetID", target)); });
}

Status UnusedOperations::Add_Block_for_Report(Key block)
{
    return access_.write([&](dao::Database &database) { addRow(database, PMTempBlock, oneField(u"BlockID", block)); });
}

Status UnusedOperations::Save_Pest_for_Trans(Key PMTarTransID, Key target, Key instruction)
{
    return access_.write([&](dao::Database &database) {
        const std::array<FieldValue, 2> fields{{{u"CTargetID", target}, {u"PMTransID", instruction}}};
        writeRow(database, rowByKey(PMTarTrans, PMTarTransID), Existing::Edit, Missing::LeaveAlone, fields);
    });
}

Status UnusedOperations::Delete_Pest_for_Trans(Key instruction, Key target)
{
    return access_.deleteFirst(PMTarTrans, pair(u"CTargetID", instruction, target));
}

Status UnusedOperations::New_Delete_All_Pests_for_Instruction()
{
    return access_.deleteFirst(PMTPest, {});
}

Status UnusedOperations::New_Delete_All_Blocks_for_Instruction()
{
    return access_.deleteFirst(PMTBlock, {});
}

Status UnusedOperations::Delete_Pest_for_Report(Key target)
{
    return access_.deleteFirst(PMTempPest, equals(u"CTargetID", target));
}

Status UnusedOperations::Delete_Block_for_Report(Key block)
{
    return access_.deleteFirst(PMTempBlock, equals(u"BlockID", block));
}

Status UnusedOperations::Delete_Soil_Analysis_Micro(Key &key)
{
    return access_.deleteFirst(SoilMicroAnalysis.table, sqlText(SoilMicroAnalysis.table.key, u" =", key));
}

Recordset UnusedOperations::Get_MonSoilBasic_byID(Key key)
{
    return access_.pestRows(rowByKey(SoilBasicAnalysis.table, key));
}

Recordset UnusedOperations::Get_MonSoilMicro_byID(Key key)
{
    return access_.pestRows(rowByKey(SoilMicroAnalysis.table, key));
}

Recordset UnusedOperations::Get_MonLeave_byID(Key key)
{
    return access_.pestRows(rowByKey(LeaveAnalysis.table, key));
}

Recordset UnusedOperations::Get_MonSoilExtract_byID(Key key)
{
    return access_.pestRows(rowByKey(SoilExtractionAnalysis.table, key));
}

Recordset UnusedOperations::Get_FertTransactions_for_Period(SerialDate from, SerialDate to)
{
    return access_.pestRows(sqlText(u"Select * from tblFTransaction where tblFTransaction.FertDate >= ", from,
                                    u" and tblFTransaction.FertDate <= ", to));
}

} // namespace store
