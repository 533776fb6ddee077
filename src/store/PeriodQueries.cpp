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

/// The totals of a pest, of one block or of all (0). Answers are selected by issue date; of all blocks, those of instructions
/// that are not completed are among them.
QString totalsOf(Key method, Key block, Key target, SerialDate from, SerialDate to)
{
    const bool isCount = method == CountMethod;
    QString sql = sqlText(u" from tblPMDataMax, tblPMTrans where tblPMDataMax.CTargetID = ", target,
                          u" and tblPMTrans.PMMethodID =", method, u" and tblPMDataMax.PMTransID = tblPMTrans.PMTransID",
                          between(isCount ? u"tblPMTrans.PMTransDateCom" : u"tblPMTrans.PMTransDate", from, to));
    if (block != 0) {
        appendSql(sql, sqlText(u" and tblPMDataMax.BlockID =", block));
    }
    if (isCount) {
        appendSql(sql, sqlText(u" and tblPMTrans.PMTransCom =", true));
    } else if (block != 0) {
        appendSql(sql, u" and  PMTransDateCom is not null");
    }
    return sql;
}

QString totalRowsSql(const QString &totals)
{
    return sqlText(u"Select *", totals,
                   u" order by tblPMTrans.PMTransDate asc, tblPMTrans.PMTransID asc, tblPMDataMax.PMDataMaxID asc");
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
    return access_.pestRows(totalRowsSql(totalsOf(CountMethod, block, target, from, to)));
}

Recordset PeriodQueries::New_Get_PestDataMaxYesNo_for_Period_Pest_Block(Key block, Key target, SerialDate from, SerialDate to)
{
    return access_.pestRows(totalRowsSql(totalsOf(YesNoMethod, block, target, from, to)));
}

Recordset PeriodQueries::sumsOfPeriod(Key method, Key block, Key target, SerialDate from, SerialDate to)
{
    const bool isCount = method == CountMethod;
    const QStringView total = isCount ? u"PMCountMax" : u"PMYesMax";
    return access_.pestRows(sqlText(u"Select tblPMTrans.PMTransDateCom, tblPMTrans.PMTransWeek, ", isCount ? u"Sum(" : u"Count(",
                                    total, u") as Amount, Max(", total, u") as Highest",
                                    totalsOf(method, block, target, from, to), u" and ", total,
                                    isCount ? u" is not null" : u" <> 0", u" and PMTransDateCom is not null",
                                    u" group by tblPMTrans.PMTransDate", isCount ? u"Com" : u"", u", tblPMTrans.PMTransID"));
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
