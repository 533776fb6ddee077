// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/ReferenceQueries.h"

#include "platform/basic/Numbers.h"
#include "store/ReferenceSql.h"
#include "store/SqlText.h"

namespace store
{

Recordset ReferenceQueries::Get_Farms()
{
    return access_.mainRows(sqlText(u"Select * from tblFarms where isactive=true order by FarmID"));
}

Recordset ReferenceQueries::Get_Workers()
{
    return access_.mainRows(sqlText(u"Select * from tblWorker order by WorkerID"));
}

Recordset ReferenceQueries::Get_CropGroup_for_Farm()
{
    return access_.mainRows(
        sqlText(u"Select * from tblCrGroup where CrGrID in (Select CrGrID from tblCrType where CrTyID in (Select CrTyID"
                u" from tblCrVariety where CrVaID in (Select CrVaID from tblBlockPlant, tblBlock where"
                u" tblBlockPlant.BlockID = tblBlock.BlockID and tblBlock.FarmID = ",
                access_.session().CurrentFarmID, u"))) order by CrGrID"));
}

Recordset ReferenceQueries::GetCrType(Key group)
{
    return access_.mainRows(sqlText(u"Select * from tblCrType where CrGrID = ", group, u" order by CrTyID"));
}

Recordset ReferenceQueries::GetCrVariety(Key type)
{
    return access_.mainRows(sqlText(u"Select * from tblCrVariety where CrTyID = ", type, u" order by CrVaID"));
}

Recordset ReferenceQueries::Get_Block_byID(Key block)
{
    return access_.mainRows(sqlText(u"Select * from tblBlock where tblBlock.BlockID = ", block));
}

Recordset ReferenceQueries::XGet_PestBlocks_for_Farms(Key /*farm*/)
{
    Recordset rows = access_.mainRows(sqlText(u" SELECT tblBlock.BlockID, tblBlock.Block, tblBlock.NoofMPoints FROM tblBlock"
                                              u" WHERE active <> 0 order by Block asc, BlockID asc"));
    access_.RecordTotal = rows.RecordCount();
    return rows;
}

Int16 ReferenceQueries::NoofMPoints_Are(Key block)
{
    return basic::toInteger16(
        firstNumber(access_.mainRows(sqlText(u"Select * from tblBlock where BlockID = ", block)), u"NoofMpoints"));
}

Recordset ReferenceQueries::Get_BlocksPlant_Variety_for_Block(Key block)
{
    return access_.mainRows(
        plantingsWithVariety(EveryField, sqlText(u" and tblBlock.BlockID =", block), sqlText(true)).append(ByVariety));
}

Recordset ReferenceQueries::Get_BlocksPlant_Variety_for_All()
{
    return access_.mainRows(
        plantingsWithVariety(u"tblBlockPlant.BlockPID, tblCrVariety.Variety", QString(), sqlText(access_.session().ShowActive)));
}

Recordset ReferenceQueries::Get_Blocks_All(Key farm, Key group, Key type, Key variety)
{
    QString tables;
    QString joins;
    if (variety == 0) {
        tables += u", tblCrVariety, tblCrType";
        joins += u" and tblBlockPlant.CrVaID = tblCrVariety.CrVaID and tblCrVariety.CrTyID = tblCrType.CrTyID";
        if (type == 0) {
            tables += u", tblCrGroup";
            joins += u" and tblCrType.CrGrID = tblCrGroup.CrGrID";
        }
    }
    QString filter;
    if (variety != 0) {
        filter = sqlText(u" and tblBlockPlant.CrVaID = ", variety);
    } else if (type != 0) {
        filter = sqlText(u" and tblCrType.CrTyID = ", type);
    } else if (group != 0) {
        filter = sqlText(u" and tblCrGroup.CrGrID = ", group);
    }
    const bool groupAlone = variety == 0 && type == 0 && group != 0;
    if (!groupAlone) {
        filter += sqlText(u" and tblBlockPlant.PBActive = ", true);
    }

    Recordset rows = access_.mainRows(sqlText(u"Select *, tblBlockPlant.CrVaID as VVV from tblBlockPlant, tblBlock", tables,
                                              u" where tblBlockPlant.BlockID = tblBlock.BlockID and tblBlock.FarmID = ", farm,
                                              joins, filter, u" order by PBlock asc, tblBlockPlant.BlockPID asc"));
    access_.RecordTotal = rows.RecordCount();
    return rows;
}

Recordset ReferenceQueries::Get_ChemTarget_by_ID(Key target)
{
    return access_.sprayRows(sqlText(u"Select * from tblCTarget where CTargetID =", target));
}

QString ReferenceQueries::ChemTarget_Is(Key target)
{
    return firstText(Get_ChemTarget_by_ID(target), u"ChemTarget");
}

QString ReferenceQueries::CTarget_Is(Key target)
{
    return firstText(access_.sprayRows(sqlText(u"Select * from tblCTarget where tblCTarget.CTargetID = ", target)),
                     u"ChemTarget");
}

Recordset ReferenceQueries::Get_Pests_for_ALL_FruitTypes(const QString &kind)
{
    Recordset rows =
        access_.sprayRows(targetsSql({}, kind.isEmpty() ? QString() : sqlText(u" where tblCTarget.CTType ='", kind, u"'")));
    if (!rows.Eof()) {
        access_.RecordTotal = rows.RecordCount();
    }
    return rows;
}

} // namespace store
