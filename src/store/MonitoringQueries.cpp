// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/MonitoringQueries.h"

#include "platform/basic/Numbers.h"
#include "store/MonitoringRows.h"
#include "store/SqlText.h"

namespace store
{

Recordset MonitoringQueries::New_Get_PestTransactions(SerialDate from, SerialDate to)
{
    QString condition = sqlText(u"tblPMTrans.PMTransDate >= ", from, u" and tblPMTrans.PMTransDate <= ", to);
    if (!access_.session().FilterAll) {
        condition = sqlText(u"PMTransCom = ", access_.session().FilterCompleted, u" and ", condition);
    }
    return access_.pestRows(rowsWhere(u"tblPMTrans", condition, u"PMTransDate asc, PMTransID asc"));
}

Recordset MonitoringQueries::Get_PMMethod_for_PMTrans(Key method)
{
    return access_.pestRows(sqlText(u"Select * from tblPMMethod where tblPMMethod.PMMethodID = ", method));
}

Recordset MonitoringQueries::Get_PestMethod()
{
    return access_.pestRows(rowsWhere(u"tblPMMethod", {}, u"PMMethodID"));
}

Recordset MonitoringQueries::Get_Pests_For_Transaction(Key instruction)
{
    return access_.pestRows(
        sqlText(u"Select *, tblPMTarTrans.CTargetID as CCTargetID from tblPMTarTrans where tblPMTarTrans.PMTransID = ",
                instruction, u" order by tblPMTarTrans.CTargetID asc, tblPMTarTrans.PMTarTransID asc"));
}

Recordset MonitoringQueries::New_Get_Pests_For_Transaction(Key instruction)
{
    return access_.pestRows(
        rowsWhere(u"tblPMtarTrans", sqlText(u"PMTransID =", instruction), u"CTargetID asc, PMTarTransID asc"));
}

Recordset MonitoringQueries::New_Get_Blocks_For_Transaction(Key instruction)
{
    return access_.pestRows(rowsWhere(u"tblPMBlockTrans", sqlText(u"PMTransID =", instruction), u"tblPMBlockTrans.BlockID asc"));
}

Recordset MonitoringQueries::New_Get_Pests_For_Instruction()
{
    return access_.pestRows(rowsWhere(u"tblPMTPest", {}, u"tblPMTPest.CTargetID asc, PMTPestID asc"));
}

Recordset MonitoringQueries::New_Get_Blocks_For_Instruction()
{
    return access_.pestRows(rowsWhere(u"tblPMTBlock", {}, u"tblPMTBlock.BlockID asc, PMTBlockID asc"));
}

Recordset MonitoringQueries::New_Fill_Pests_For_Instruction(Key target)
{
    return access_.pestRows(rowsWhere(u"tblPMTPest", sqlText(u"tblPMTPest.CTargetID =", target), u"PMTPestID"));
}

Recordset MonitoringQueries::New_Fill_Blocks_For_Instruction(Key block)
{
    return access_.pestRows(rowsWhere(u"tblPMTBlock", sqlText(u"tblPMTBlock.BlockID =", block), u"PMTBlockID"));
}

Recordset MonitoringQueries::Get_PestData_for_Block_of_Transaction(Key instruction, Key block)
{
    return access_.pestRows(dataRows({.target = {}, .block = block, .instruction = instruction, .point = {}},
                                     u"tblPMData.PMBPunt asc, tblPMData.CTargetID asc, tblPMData.PMDataID asc"));
}

Recordset MonitoringQueries::New_Get_PestDataMax_for_Transaction(Key block, Key target, Key instruction)
{
    return access_.pestRows(totalRows({.target = target, .block = block, .instruction = instruction, .point = {}}));
}

Recordset MonitoringQueries::Get_NN_PestData_Points_Transaction(Key instruction, Key block)
{
    return access_.pestRows(pointsOf({.target = {}, .block = block, .instruction = instruction, .point = {}}));
}

Recordset MonitoringQueries::Get_PestData_Points_Pest(Key target)
{
    return access_.pestRows(sqlText(u"Select MAX(PMBPunt) from tblPMData where tblPMData.CTargetID = ", target));
}

Int16 MonitoringQueries::No_of_Pests(Key instruction)
{
    const Recordset rows =
        access_.pestRows(sqlText(u"Select CTargetID from tblPMTarTrans where tblPMTarTrans.PMTransID =", instruction));
    return basic::toInteger16(rows.RecordCount());
}

} // namespace store
