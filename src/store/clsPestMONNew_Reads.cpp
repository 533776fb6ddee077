// SPDX-License-Identifier: GPL-3.0-or-later
// Reads of instructions, their results and the selection work tables. Where a statement's own order leaves ties, the key
// decides, so that the first row of a doubled key is always the oldest.
#include "store/clsPestMONNew.h"

#include "platform/basic/Numbers.h"
#include "store/SqlText.h"

using store::sqlText;

namespace
{

using Recordset = dao::Recordset;
using Key = clsPestMONNew::Key;

QString rowsWhere(QStringView table, QStringView condition, QStringView order)
{
    return sqlText(u"Select * from ", table, condition.isEmpty() ? u"" : u" where ", condition, u" order by ", order);
}

/// Condition on detail or total rows; a clause is left out where its key is not given.
struct RowFilter {
    std::optional<Key> target;
    std::optional<Key> block;
    std::optional<Key> instruction;
    std::optional<Key> point;

    QString on(QStringView table) const
    {
        QString condition;
        const auto clause = [&](QStringView field, std::optional<Key> value) {
            if (value) {
                condition += sqlText(condition.isEmpty() ? u"" : u" and ", table, u".", field, u" = ", *value);
            }
        };
        clause(u"PMBPunt", point);
        clause(u"CTargetID", target);
        clause(u"BlockID", block);
        clause(u"PMTransID", instruction);
        return condition;
    }
};

QString dataRows(const RowFilter &filter, QStringView order)
{
    return rowsWhere(u"tblPMData", filter.on(u"tblPMData"), order);
}

QString totalRows(const RowFilter &filter)
{
    return rowsWhere(u"tblPMDataMax", filter.on(u"tblPMDataMax"), u"tblPMDataMax.PMDataMaxID");
}

QString pointsOf(const RowFilter &filter)
{
    return sqlText(u"Select distinct PMBPunt from tblPMData where ", filter.on(u"tblPMData"), u" order by PMBPunt");
}

QString instructionsOfYear(QStringView tables, const QString &condition, Key method, int year)
{
    return sqlText(u"Select *, tblPMTrans.PMTransID as PMTransIDD from ", tables, u" where ", condition,
                   u" and tblPMTrans.PMMethodID = ", method, u" and Datepart('yyyy', tblPMTrans.PMTransDate) =", year,
                   u" order by PMTransDate asc, tblPMTrans.PMTransID asc");
}

constexpr QStringView ByPointAndKey = u"tblPMData.PMBPunt asc, tblPMData.PMDataID asc";

} // namespace

Recordset clsPestMONNew::Get_PMTrans(Key instruction)
{
    return pestRows(sqlText(u"Select * from tblPMTrans where tblPMTrans.pmtransID = ", instruction));
}

Recordset clsPestMONNew::New_Get_PestTransactions(SerialDate from, SerialDate to)
{
    QString condition = sqlText(u"tblPMTrans.PMTransDate >= ", from, u" and tblPMTrans.PMTransDate <= ", to);
    if (!session_.FilterAll) {
        condition = sqlText(u"PMTransCom = ", session_.FilterCompleted, u" and ", condition);
    }
    return pestRows(rowsWhere(u"tblPMTrans", condition, u"PMTransDate asc, PMTransID asc"));
}

Recordset clsPestMONNew::Get_PestTransaction_For_Block(Key block)
{
    return pestRows(rowsWhere(u"tblPMTrans", sqlText(u"tblPMTrans.BlockID = ", block), u"PMTransDate asc, PMTransID asc"));
}

Recordset clsPestMONNew::Get_PestTransaction_For_BlockMethodYear(Key block, Key method, int year)
{
    return pestRows(instructionsOfYear(u"tblPMTrans", sqlText(u"tblPMTrans.BlockID = ", block), method, year));
}

Recordset clsPestMONNew::New_Get_PestTransaction_For_BlockMethodYear(Key block, Key method, int year)
{
    return pestRows(instructionsOfYear(
        u"tblPMTrans, tblPMBlockTrans",
        sqlText(u"tblPMBlockTrans.BlockID = ", block, u" and tblPMBlockTrans.PMtransID = tblPMTrans.PMTransID"), method, year));
}

Recordset clsPestMONNew::Get_PMMethod_for_PMTrans(Key method)
{
    return pestRows(sqlText(u"Select * from tblPMMethod where tblPMMethod.PMMethodID = ", method));
}

Recordset clsPestMONNew::Get_PestMethod()
{
    return pestRows(rowsWhere(u"tblPMMethod", {}, u"PMMethodID"));
}

Recordset clsPestMONNew::Get_Pests_Trans(Key instruction, Key target)
{
    return pestRows(rowsWhere(u"tblPMTarTrans",
                              sqlText(u"tblPMTarTrans.pmtransID = ", instruction, u" and tblPMTarTrans.CTargetID = ", target),
                              u"PMTarTransID"));
}

Recordset clsPestMONNew::Get_Pests_For_Transaction(Key instruction)
{
    return pestRows(
        sqlText(u"Select *, tblPMTarTrans.CTargetID as CCTargetID from tblPMTarTrans where tblPMTarTrans.PMTransID = ",
                instruction, u" order by tblPMTarTrans.CTargetID asc, tblPMTarTrans.PMTarTransID asc"));
}

Recordset clsPestMONNew::New_Get_Pests_For_Transaction(Key instruction)
{
    return pestRows(rowsWhere(u"tblPMtarTrans", sqlText(u"PMTransID =", instruction), u"CTargetID asc, PMTarTransID asc"));
}

Recordset clsPestMONNew::New_Get_Blocks_For_Transaction(Key instruction)
{
    return pestRows(rowsWhere(u"tblPMBlockTrans", sqlText(u"PMTransID =", instruction), u"tblPMBlockTrans.BlockID asc"));
}

Recordset clsPestMONNew::New_Get_Pests_For_Instruction()
{
    return pestRows(rowsWhere(u"tblPMTPest", {}, u"tblPMTPest.CTargetID asc, PMTPestID asc"));
}

Recordset clsPestMONNew::New_Get_Blocks_For_Instruction()
{
    return pestRows(rowsWhere(u"tblPMTBlock", {}, u"tblPMTBlock.BlockID asc, PMTBlockID asc"));
}

Recordset clsPestMONNew::New_Fill_Pests_For_Instruction(Key target)
{
    return pestRows(rowsWhere(u"tblPMTPest", sqlText(u"tblPMTPest.CTargetID =", target), u"PMTPestID"));
}

Recordset clsPestMONNew::New_Fill_Blocks_For_Instruction(Key block)
{
    return pestRows(rowsWhere(u"tblPMTBlock", sqlText(u"tblPMTBlock.BlockID =", block), u"PMTBlockID"));
}

Recordset clsPestMONNew::Get_Pests_For_Report()
{
    return pestRows(rowsWhere(u"tblPMTempPest", {}, u"tblPMTempPest.CTargetID asc, PMTempPestID asc"));
}

Recordset clsPestMONNew::Get_Blocks_For_Report()
{
    return pestRows(rowsWhere(u"tblPMTempBlock", {}, u"tblPMTempBlock.BlockID asc, PMTempBlockID asc"));
}

Recordset clsPestMONNew::Fill_Pests_For_Report(Key target)
{
    return pestRows(rowsWhere(u"tblPMTempPest", sqlText(u"tblPMTempPest.CTargetID =", target), u"PMTempPestID"));
}

Recordset clsPestMONNew::Fill_Blocks_For_Report(Key block)
{
    return pestRows(rowsWhere(u"tblPMTempBlock", sqlText(u"tblPMTempBlock.BlockID =", block), u"PMTempBlockID"));
}

Recordset clsPestMONNew::Get_PestData_for_Transaction(Int16 point, Key target, Key instruction)
{
    return pestRows(dataRows({.target = target, .block = {}, .instruction = instruction, .point = point}, u"tblPMData.PMDataID"));
}

Recordset clsPestMONNew::New_Get_PestData_for_Transaction(Key instruction, Key block, Key target, Int16 point)
{
    return pestRows(
        dataRows({.target = target, .block = block, .instruction = instruction, .point = point}, u"tblPMData.PMDataID"));
}

Recordset clsPestMONNew::Get_PestData_for_Block_of_Transaction(Key instruction, Key block)
{
    return pestRows(dataRows({.target = {}, .block = block, .instruction = instruction, .point = {}},
                             u"tblPMData.PMBPunt asc, tblPMData.CTargetID asc, tblPMData.PMDataID asc"));
}

Recordset clsPestMONNew::Get_GRAF_PestData_Count_for_Points(Key target, Key instruction)
{
    return pestRows(dataRows({.target = target, .block = {}, .instruction = instruction, .point = {}}, ByPointAndKey));
}

Recordset clsPestMONNew::New_Get_GRAF_PestData_Count_for_Points(Key block, Key target, Key instruction)
{
    return pestRows(dataRows({.target = target, .block = block, .instruction = instruction, .point = {}}, ByPointAndKey));
}

Recordset clsPestMONNew::Get_PestDataMax_for_Transaction(Key target, Key instruction)
{
    return pestRows(totalRows({.target = target, .block = {}, .instruction = instruction, .point = {}}));
}

Recordset clsPestMONNew::New_Get_PestDataMax_for_Transaction(Key block, Key target, Key instruction)
{
    return pestRows(totalRows({.target = target, .block = block, .instruction = instruction, .point = {}}));
}

Recordset clsPestMONNew::Get_PestData_Points_Transaction(Key instruction)
{
    return pestRows(pointsOf({.target = {}, .block = {}, .instruction = instruction, .point = {}}));
}

Recordset clsPestMONNew::Get_NN_PestData_Points_Transaction(Key instruction, Key block)
{
    return pestRows(pointsOf({.target = {}, .block = block, .instruction = instruction, .point = {}}));
}

Recordset clsPestMONNew::New_Get_PestData_Points_TransBlock(Key instruction, Key block)
{
    return Get_NN_PestData_Points_Transaction(instruction, block);
}

Recordset clsPestMONNew::Get_PestData_Points_Pest(Key target)
{
    return pestRows(sqlText(u"Select MAX(PMBPunt) from tblPMData where tblPMData.CTargetID = ", target));
}

clsPestMONNew::Int16 clsPestMONNew::No_of_Pests(Key instruction)
{
    const Recordset rows = pestRows(sqlText(u"Select CTargetID from tblPMTarTrans where tblPMTarTrans.PMTransID =", instruction));
    return basic::toInteger16(rows.RecordCount());
}

clsPestMONNew::Int16 clsPestMONNew::New_No_of_MonPoints(Key instruction, Key block)
{
    const Recordset rows = pestRows(sqlText(u"Select * from tblPMBlockTrans where tblPMBlockTrans.PMTransID =", instruction,
                                            u" and tblPMBlockTrans.BlockID =", block));
    return rows.Eof() ? Int16{0} : basic::toInteger16(rows.longValue(u"NoofMpoints"));
}

Recordset clsPestMONNew::Method_Used(Key instruction)
{
    return pestRows(sqlText(u"Select distinct PMMethodID from tblPMData where tblPMData.PMTransID =", instruction));
}

Recordset clsPestMONNew::Get_Methods_Used(Key instruction, Key target)
{
    return pestRows(sqlText(u"Select distinct TargetID from tblPMData where tblPMData.PMTransID =", instruction,
                            u" and tblPMData.TargetID = ", target));
}
