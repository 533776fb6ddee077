// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/ReferenceSql.h"

#include "store/SqlText.h"

namespace store
{

Key firstNumber(const Recordset &rows, QStringView field)
{
    return rows.Eof() ? 0 : rows.longValue(field);
}

QString firstText(const Recordset &rows, QStringView field)
{
    return rows.Eof() ? QString() : rows.text(field);
}

QString plantingsWithVariety(QStringView fields, const QString &keyClause, const QString &activity)
{
    return sqlText(u"Select ", fields, u", tblCrGroup.CrGrID as CrGrIDD,",
                   u" tblCrType.CrTyID as CrTyIDD, tblCrVariety.CrVaID as CrVaIDD from tblBlockPlant,",
                   u" tblBlock, tblCrVariety, tblCrType, tblCrGroup",
                   u" where tblBlockPlant.CrVaID = tblCrVariety.CrVaID and tblCrVariety.CrTyID = tblCrType.CrTyID",
                   u" and tblCrGroup.CrGrID = tblCrType.CrGrID", u" and tblBlock.BlockID = tblBlockPlant.BlockID", keyClause,
                   u" and tblBlockPlant.PBActive = ", activity);
}

QString targetsSql(QStringView otherTable, const QString &where)
{
    return sqlText(u"Select tblCTarget.CTargetID as CCTargetID, tblCTarget.ChemTarget as Target from ", otherTable, u"tblCTarget",
                   where, u" order by tblCTarget.ChemTarget asc, tblCTarget.CTargetID asc");
}

} // namespace store
