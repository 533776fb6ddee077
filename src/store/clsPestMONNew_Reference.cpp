// SPDX-License-Identifier: GPL-3.0-or-later
// Farms, workers, crops, blocks and targets. Where a statement's own order leaves ties, the key decides.
#include "store/clsPestMONNew.h"

#include "platform/basic/Numbers.h"
#include "store/SqlText.h"

using store::sqlText;

namespace
{

using Recordset = dao::Recordset;

std::int32_t firstNumber(const Recordset &rows, QStringView field)
{
    return rows.Eof() ? 0 : rows.longValue(field);
}

QString firstText(const Recordset &rows, QStringView field)
{
    return rows.Eof() ? QString() : rows.text(field);
}

/// Plantings with their block, variety, type and group; the columns that two tables share have a name of their own.
QString plantingsWithVariety(QStringView fields, const QString &keyClause, const QString &activity)
{
    return sqlText(u"Select ", fields, u", tblCrGroup.CrGrID as CrGrIDD,",
                   u" tblCrType.CrTyID as CrTyIDD, tblCrVariety.CrVaID as CrVaIDD from tblBlockPlant,",
                   u" tblBlock, tblCrVariety, tblCrType, tblCrGroup",
                   u" where tblBlockPlant.CrVaID = tblCrVariety.CrVaID and tblCrVariety.CrTyID = tblCrType.CrTyID",
                   u" and tblCrGroup.CrGrID = tblCrType.CrGrID", u" and tblBlock.BlockID = tblBlockPlant.BlockID", keyClause,
                   u" and tblBlockPlant.PBActive = ", activity);
}

constexpr QStringView EveryField = u"*, tblBlock.BlockID as BlockIDD";
constexpr QStringView ByVariety = u" order by tblCrVariety.Variety, tblBlockPlant.BlockPID";

QString targetsSql(QStringView otherTable, const QString &where)
{
    return sqlText(u"Select tblCTarget.CTargetID as CCTargetID, tblCTarget.ChemTarget as Target from ", otherTable, u"tblCTarget",
                   where, u" order by tblCTarget.ChemTarget asc, tblCTarget.CTargetID asc");
}

} // namespace

Recordset clsPestMONNew::Get_Farms()
{
    return mainRows(sqlText(u"Select * from tblFarms where isactive=true order by FarmID"));
}

Recordset clsPestMONNew::Get_Workers()
{
    return mainRows(sqlText(u"Select * from tblWorker order by WorkerID"));
}

Recordset clsPestMONNew::Get_Worker_byID(Key worker)
{
    return mainRows(sqlText(u"Select * from tblWorker where tblWorker.WorkerID = ", worker));
}

Recordset clsPestMONNew::Get_Years()
{
    return mainRows(sqlText(u"Select * from tblYear order by FYear asc"));
}

Recordset clsPestMONNew::Get_CropGroup()
{
    return mainRows(sqlText(u"Select * from tblCrGroup order by CrGrID"));
}

Recordset clsPestMONNew::Get_CropGroup_for_Farm()
{
    return mainRows(
        sqlText(u"Select * from tblCrGroup where CrGrID in (Select CrGrID from tblCrType where CrTyID in (Select CrTyID"
                u" from tblCrVariety where CrVaID in (Select CrVaID from tblBlockPlant, tblBlock where"
                u" tblBlockPlant.BlockID = tblBlock.BlockID and tblBlock.FarmID = ",
                session_.CurrentFarmID, u"))) order by CrGrID"));
}

Recordset clsPestMONNew::GetCrGroup_byID(Key group)
{
    return pestRows(sqlText(u"Select * from tblCrGroup where CrGrID = ", group));
}

Recordset clsPestMONNew::GetCrType(Key group)
{
    return mainRows(sqlText(u"Select * from tblCrType where CrGrID = ", group, u" order by CrTyID"));
}

Recordset clsPestMONNew::Get_CropType_for_Group(Key group)
{
    return mainRows(sqlText(u"Select * from tblCrType where tblCrType.CrGrID = ", group, u" order by CrTyID"));
}

Recordset clsPestMONNew::Get_CropType_for_Group_for_Farm()
{
    return mainRows(
        sqlText(u"Select * from tblCrType where CrTyID in (Select CrTyID from tblCrVariety where CrVaID in (Select CrVaID"
                u" from tblBlockPlant, tblBlock where tblBlockPlant.BlockID = tblBlock.BlockID and tblBlock.FarmID = ",
                session_.CurrentFarmID, u")) and tblCrType.CrGrID =", session_.FilterCrGrID, u" order by CrTyID"));
}

clsPestMONNew::Key clsPestMONNew::CrTyID_Is(const QString &name)
{
    return firstNumber(mainRows(sqlText(u"Select * from tblCrType where tblCrType.Type = '", name, u"' ")), u"CrTyID");
}

Recordset clsPestMONNew::GetCrVariety(Key type)
{
    return mainRows(sqlText(u"Select * from tblCrVariety where CrTyID = ", type, u" order by CrVaID"));
}

Recordset clsPestMONNew::GetCrVariety_Combo()
{
    return mainRows(sqlText(u"Select * from tblCrVariety order by CrVaID"));
}

Recordset clsPestMONNew::Get_Block_byID(Key block)
{
    return mainRows(sqlText(u"Select * from tblBlock where tblBlock.BlockID = ", block));
}

Recordset clsPestMONNew::Get_Blocks_for_Farms(Key farm)
{
    return mainRows(sqlText(u"Select * from tblBlock where tblBlock.FarmID = ", farm, u" order by Block asc, BlockID asc"));
}

Recordset clsPestMONNew::XGet_PestBlocks_for_Farms(Key /*farm*/)
{
    Recordset rows = mainRows(sqlText(u" SELECT tblBlock.BlockID, tblBlock.Block, tblBlock.NoofMPoints FROM tblBlock"
                                      u" WHERE active <> 0 order by Block asc, BlockID asc"));
    RecordTotal = rows.RecordCount();
    return rows;
}

clsPestMONNew::Int16 clsPestMONNew::NoofMPoints_Are(Key block)
{
    return basic::toInteger16(firstNumber(mainRows(sqlText(u"Select * from tblBlock where BlockID = ", block)), u"NoofMpoints"));
}

clsPestMONNew::Key clsPestMONNew::BigBlock_ID(Key planting)
{
    return firstNumber(mainRows(sqlText(u"Select * from tblBlockPlant where BlockPID =", planting)), u"BlockID");
}

QString clsPestMONNew::BigBlock_Name(Key block)
{
    return firstText(mainRows(sqlText(u"Select * from tblBlock where BlockID =", block)), u"Block");
}

QString clsPestMONNew::PlantBlock_Name(Key planting)
{
    return firstText(mainRows(sqlText(u"Select * from tblBlockPlant where BlockPID =", planting)), u"PBlock");
}

Recordset clsPestMONNew::Get_BlockPlant_for_Blocks(Key block)
{
    return mainRows(
        sqlText(u"Select * from tblBlockPlant where tblBlockPlant.BlockID = ", block, u" order by PBlock asc, BlockPID asc"));
}

Recordset clsPestMONNew::Get_BlockPlant_for_Blocks_Active(Key block)
{
    return mainRows(sqlText(u"Select * from tblBlockPlant where tblBlockPlant.BlockID = ", block,
                            u" and tblBlockPlant.PBActive = -1 order by PBlock asc, BlockPID asc"));
}

Recordset clsPestMONNew::Get_BlocksPlant_Variety_for_Block(Key block)
{
    return mainRows(
        plantingsWithVariety(EveryField, sqlText(u" and tblBlock.BlockID =", block), sqlText(true)).append(ByVariety));
}

Recordset clsPestMONNew::Get_BlocksPlant_Variety_for_Block_new(Key planting)
{
    return mainRows(
        plantingsWithVariety(EveryField, sqlText(u" and tblBlockPlant.BlockPID =", planting), sqlText(session_.ShowActive))
            .append(ByVariety));
}

Recordset clsPestMONNew::Get_BlocksPlant_Variety_for_All()
{
    return mainRows(
        plantingsWithVariety(u"tblBlockPlant.BlockPID, tblCrVariety.Variety", QString(), sqlText(session_.ShowActive)));
}

Recordset clsPestMONNew::Get_Blocks_All(Key farm, Key group, Key type, Key variety)
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

    Recordset rows = mainRows(sqlText(u"Select *, tblBlockPlant.CrVaID as VVV from tblBlockPlant, tblBlock", tables,
                                      u" where tblBlockPlant.BlockID = tblBlock.BlockID and tblBlock.FarmID = ", farm, joins,
                                      filter, u" order by PBlock asc, tblBlockPlant.BlockPID asc"));
    RecordTotal = rows.RecordCount();
    return rows;
}

Recordset clsPestMONNew::Get_ChemTarget()
{
    return sprayRows(sqlText(u"Select * from tblCTarget order by tblCTarget.ChemTarget asc, tblCTarget.CTargetID asc"));
}

Recordset clsPestMONNew::Get_ChemTarget_by_ID(Key target)
{
    return sprayRows(sqlText(u"Select * from tblCTarget where CTargetID =", target));
}

QString clsPestMONNew::ChemTarget_Is(Key target)
{
    return firstText(Get_ChemTarget_by_ID(target), u"ChemTarget");
}

QString clsPestMONNew::CTarget_Is(Key target)
{
    return firstText(sprayRows(sqlText(u"Select * from tblCTarget where tblCTarget.CTargetID = ", target)), u"ChemTarget");
}

clsPestMONNew::Key clsPestMONNew::CTargetID_Is(const QString &name)
{
    return firstNumber(mainRows(sqlText(u"Select * from tblCTarget where tblCTarget.ChemTarget = '", name, u"' ")), u"CTargetID");
}

clsPestMONNew::Key clsPestMONNew::ActiveIngredientID_Is(const QString &name)
{
    return firstNumber(
        mainRows(sqlText(u"Select * from tblActiveIngredient where tblActiveIngredient.ActiveIngredient = '", name, u"' ")),
        u"ActInID");
}

Recordset clsPestMONNew::Get_Pests_for_FruitType(Key type, const QString &kind)
{
    Recordset rows = sprayRows(
        targetsSql(u"tblTargetFType, ",
                   sqlText(u" where tblTargetFType.CrTyID =", type,
                           u" and tblTargetFType.CTargetID = tblCTarget.CTargetID and tblCTarget.CTType ='", kind, u"'")));
    if (!rows.Eof()) {
        RecordTotal = rows.RecordCount();
    }
    return rows;
}

Recordset clsPestMONNew::Get_Pests_for_ALL_FruitTypes(const QString &kind)
{
    Recordset rows = sprayRows(targetsSql({}, kind.isEmpty() ? QString() : sqlText(u" where tblCTarget.CTType ='", kind, u"'")));
    if (!rows.Eof()) {
        RecordTotal = rows.RecordCount();
    }
    return rows;
}
