// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/PeriodQueries.h"

#include "common/MonitoringConstants.h"
#include "store/SqlText.h"

namespace store
{

namespace
{

/// What a ranking lists, and what it may be limited to.
struct Ranking {
    QStringView listed;
    QStringView limitedBy;
};

QString between(QStringView field, SerialDate from, SerialDate to)
{
    return sqlText(u" and ", field, u" >=", from, u" and ", field, u" <=", to);
}

QString rankingSql(Ranking ranking, Key limit, SerialDate from, SerialDate to, Key method, int mode)
{
    const QString limited = limit == 0 ? QString() : sqlText(u" and tblPMDataMax.", ranking.limitedBy, u" =", limit);
    const QString period = between(u"tblPMTrans.PMTransDateCom", from, to);
    if (mode == Unordered) {
        return sqlText(u"Select distinct ", ranking.listed, u" from tblPMDataMax, tblPMTrans",
                       u" Where tblPMDataMax.PMTransID = tblPMTrans.PMTransID", limited, period, u" and tblPMTrans.PMMethodID = ",
                       method, u" and tblPMTrans.PMTransCom =", true, u" order by ", ranking.listed);
    }
    if (mode != HighestFirst && mode != LowestFirst) {
        return {};
    }
    const QStringView total = method == CountMethod ? u"PMCountMax" : u"PMYesMax";
    return sqlText(u"SELECT tblPMDataMax.", ranking.listed, u", Sum(tblPMDataMax.", total, u") AS SumOf", total,
                   u" FROM tblPMTrans INNER JOIN tblPMDataMax ON tblPMTrans.PMTransID = tblPMDataMax.PMTransID",
                   u" Where tblPMTrans.PMMethodID = ", method, u" And tblPMTrans.PMTransCom = ", true, limited, period,
                   u" GROUP BY tblPMDataMax.", ranking.listed, u" ORDER BY Sum(tblPMDataMax.", total, u") ",
                   mode == HighestFirst ? u"DESC" : u"ASC", u", tblPMDataMax.", ranking.listed, u" ASC");
}

QString totalsSql(Key target, Key method, const QString &conditions)
{
    return sqlText(u"Select * from tblPMDataMax, tblPMTrans where tblPMDataMax.CTargetID = ", target,
                   u" and tblPMTrans.PMMethodID =", method, u" and tblPMDataMax.PMTransID = tblPMTrans.PMTransID", conditions,
                   u" order by tblPMTrans.PMTransDate asc, tblPMTrans.PMTransID asc, tblPMDataMax.PMDataMaxID asc");
}

QString onlyBlock(Key block)
{
    return block == 0 ? QString() : sqlText(u" and tblPMDataMax.BlockID =", block);
}

} // namespace

Recordset PeriodQueries::Get_PestDataMax_for_Period_Pest_Block(Key block, SerialDate from, SerialDate to, Key method, int mode)
{
    return access_.pestRows(rankingSql({u"CTargetID", u"BlockID"}, block, from, to, method, mode));
}

Recordset PeriodQueries::Get_PestDataMax_for_Period_Block(Key target, SerialDate from, SerialDate to, Key method, int mode)
{
    return access_.pestRows(rankingSql({u"BlockID", u"CTargetID"}, target, from, to, method, mode));
}

Recordset PeriodQueries::New_Get_PestDataMax_for_Period_Pest_Block(Key block, Key target, SerialDate from, SerialDate to)
{
    return access_.pestRows(totalsSql(
        target, CountMethod,
        sqlText(between(u"tblPMTrans.PMTransDateCom", from, to), onlyBlock(block), u" and tblPMTrans.PMTransCom =", true)));
}

Recordset PeriodQueries::New_Get_PestDataMaxYesNo_for_Period_Pest_Block(Key block, Key target, SerialDate from, SerialDate to)
{
    QString conditions = sqlText(between(u"tblPMTrans.PMTransDate", from, to), onlyBlock(block));
    if (block != 0) {
        conditions += u" and  PMTransDateCom is not null";
    }
    return access_.pestRows(totalsSql(target, YesNoMethod, conditions));
}

Recordset PeriodQueries::Get_PestData_for_Block(Key block, Key target, SerialDate from, SerialDate to)
{
    return access_.pestRows(
        sqlText(u"SELECT tblPMTrans.*, tblPMData.* FROM tblPMTrans",
                u" INNER JOIN tblPMData ON tblPMTrans.PMTransID = tblPMData.PMTransID", u" WHERE tblPMTrans.PMTransDateCom>=",
                from, u" AND tblPMTrans.PMTransDateCom<=", to, u" AND tblPMTrans.PMTransCom=", true, u" AND tblPMData.BlockID=",
                block, u" AND tblPMData.CTargetID =", target,
                u" order by tblPMTrans.PMTransDateCom, tblPMTrans.PMTransID,tblPMData.PMBPunt, tblPMData.PMDataID"));
}

} // namespace store
