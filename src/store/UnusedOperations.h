// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/MonitoringRows.h"
#include "store/StoreAccess.h"

namespace store
{

/// Operations that no screen calls. They exist because they complete the families of the other groups: the data class offers
/// every operation that an extension of the suite may look for, also those of the instructions with one block and of the report
/// selections.
class UnusedOperations
{
public:
    Recordset Get_Worker_byID(Key worker);
    Recordset Get_Years();
    Recordset Get_CropGroup();
    /// Runs on the pest database, which has no such table, so it always raises an error.
    Recordset GetCrGroup_byID(Key group);
    Recordset Get_CropType_for_Group(Key group);
    Recordset Get_CropType_for_Group_for_Farm();
    Key CrTyID_Is(const QString &name);
    Recordset GetCrVariety_Combo();
    Recordset Get_Blocks_for_Farms(Key farm);
    Key BigBlock_ID(Key planting);
    QString BigBlock_Name(Key block);
    QString PlantBlock_Name(Key planting);
    Recordset Get_BlockPlant_for_Blocks(Key block);
    Recordset Get_BlockPlant_for_Blocks_Active(Key block);
    Recordset Get_BlocksPlant_Variety_for_Block_new(Key planting);
    Recordset Get_ChemTarget();
    /// Runs on the main database, which has no such table, so it always raises an error.
    Key CTargetID_Is(const QString &name);
    Key ActiveIngredientID_Is(const QString &name);
    /// Sets RecordTotal only when there are rows.
    Recordset Get_Pests_for_FruitType(Key type, const QString &kind);
    Status Add_PMTrans(Key &PMTransID, Key block, Key method, SerialDate issued, const QString &notes, const QString &person,
                       Int16 points, Int16 week, bool completed, bool repeat);
    Status Add_PestData(Key instruction, Key target, Int16 point, const PointValues &values);
    Status Add_PestDataMax(Key instruction, Key target, const TotalValues &values);
    Status Add_Pest_for_Report(Key target);
    Status Add_Block_for_Report(Key block);
    Status Save_Pest_for_Trans(Key PMTarTransID, Key target, Key instruction);
    Status Delete_Pest_for_Trans(Key instruction, Key target);
    Status New_Delete_All_Pests_for_Instruction();
    Status New_Delete_All_Blocks_for_Instruction();
    Status Delete_Pest_for_Report(Key target);
    Status Delete_Block_for_Report(Key block);
    Recordset Get_PMTrans(Key instruction);
    Recordset Get_PestTransaction_For_Block(Key block);
    Recordset Get_PestTransaction_For_BlockMethodYear(Key block, Key method, int year);
    Recordset New_Get_PestTransaction_For_BlockMethodYear(Key block, Key method, int year);
    Recordset Get_Pests_Trans(Key instruction, Key target);
    Recordset Get_Pests_For_Report();
    Recordset Get_Blocks_For_Report();
    Recordset Fill_Pests_For_Report(Key target);
    Recordset Fill_Blocks_For_Report(Key block);
    Recordset Get_PestData_for_Transaction(Int16 point, Key target, Key instruction);
    Recordset New_Get_PestData_for_Transaction(Key instruction, Key block, Key target, Int16 point);
    Recordset Get_GRAF_PestData_Count_for_Points(Key target, Key instruction);
    Recordset New_Get_GRAF_PestData_Count_for_Points(Key block, Key target, Key instruction);
    Recordset Get_PestDataMax_for_Transaction(Key target, Key instruction);
    Recordset Get_PestData_Points_Transaction(Key instruction);
    Recordset New_Get_PestData_Points_TransBlock(Key instruction, Key block);
    Int16 New_No_of_MonPoints(Key instruction, Key block);
    Recordset Method_Used(Key instruction);
    Recordset Get_Methods_Used(Key instruction, Key target);
    Status Delete_Soil_Analysis_Micro(Key &key);
    Recordset Get_MonSoilBasic_byID(Key key);
    Recordset Get_MonSoilMicro_byID(Key key);
    Recordset Get_MonLeave_byID(Key key);
    Recordset Get_MonSoilExtract_byID(Key key);
    Recordset Get_FertTransactions_for_Period(SerialDate from, SerialDate to);

protected:
    explicit UnusedOperations(StoreAccess &access) : access_(access) {}
    ~UnusedOperations() = default;

private:
    StoreAccess &access_;
};

} // namespace store
