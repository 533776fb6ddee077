// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/SessionContext.h"
#include "platform/dao/Recordset.h"

#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <optional>

namespace store
{
struct KeyedTable;
}

/// The one data-access class. Every operation goes through the session's database handles.
///
/// A Get_ operation returns an open set on its first row, a snapshot unless said otherwise. Operations ending in _Is, _Name, _ID
/// or _Are return one field of the first row, or "" or 0 when there is none. Both let errors pass to the caller.
/// A writer returns its status: 0 done, 1 an error, in which case nothing of the failed row is written and lastError() tells why.
/// A period holds both its days.
/// A delete operation removes one row, the one with the lowest key that its query finds, whatever its name says.
class clsPestMONNew
{
public:
    using Key = std::int32_t;
    using Int16 = std::int16_t;
    using SerialDate = basic::SerialDate;
    using Recordset = dao::Recordset;
    using Status = int;
    static constexpr Status Done = 0;
    static constexpr Status Failed = 1;

    /// Six values of a detail row: count, in, out, and the same three as Yes/No.
    struct PointValues {
        Int16 PMCount = 0, PMCountUnder = 0, PMCountUpper = 0;
        bool PMYes = false, PMYesUnder = false, PMYesUpper = false;
    };
    /// Six values of a total row; the Yes values count answers.
    struct TotalValues {
        Int16 PMCountMax = 0, PMCountUnderMax = 0, PMCountUpperMax = 0;
        Int16 PMYesMax = 0, PMYesUnderMax = 0, PMYesUpperMax = 0;
    };
    /// Which of the six fields a save writes; any other number writes none of them.
    enum FieldSelector : int { AllFields = 0, Count = 1, CountUnder, CountUpper, Yes, YesUnder, YesUpper };

    explicit clsPestMONNew(SessionContext &session);

    /// Rows of the last list query that counts; see each of them for what an empty result does.
    int RecordTotal = 0;
    /// Why the last writer returned 1; empty after one that returned 0.
    const std::optional<basic::RunTimeError> &lastError() const { return lastError_; }

    /// What is to be done before the first write of each day; it must not raise errors.
    void setBeforeFirstWriteOfDay(std::function<void()> body) { beforeFirstWriteOfDay_ = std::move(body); }

    // Farms, workers, crops, blocks and targets.
    Recordset Get_Farms();
    Recordset Get_Workers();
    Recordset Get_Worker_byID(Key worker);
    Recordset Get_Years();
    Recordset Get_CropGroup();
    /// Groups planted on the current farm.
    Recordset Get_CropGroup_for_Farm();
    /// Runs on the pest database, which has no such table, so it always raises an error.
    Recordset GetCrGroup_byID(Key group);
    Recordset GetCrType(Key group);
    Recordset Get_CropType_for_Group(Key group);
    Recordset Get_CropType_for_Group_for_Farm();
    Key CrTyID_Is(const QString &name);
    Recordset GetCrVariety(Key type);
    Recordset GetCrVariety_Combo();
    Recordset Get_Block_byID(Key block);
    Recordset Get_Blocks_for_Farms(Key farm);
    /// The active blocks of all farms, whatever the argument. Sets RecordTotal.
    Recordset XGet_PestBlocks_for_Farms(Key farm);
    Int16 NoofMPoints_Are(Key block);
    Key BigBlock_ID(Key planting);
    QString BigBlock_Name(Key block);
    QString PlantBlock_Name(Key planting);
    Recordset Get_BlockPlant_for_Blocks(Key block);
    Recordset Get_BlockPlant_for_Blocks_Active(Key block);
    Recordset Get_BlocksPlant_Variety_for_Block(Key block);
    Recordset Get_BlocksPlant_Variety_for_Block_new(Key planting);
    /// BlockPID, Variety, CrGrIDD, CrTyIDD and CrVaIDD of every planting: what the operation above gives one by one, in a single
    /// set without an order.
    Recordset Get_BlocksPlant_Variety_for_All();
    /// The most specific of the three filters counts; the group filter alone lists inactive plantings too. Sets RecordTotal.
    Recordset Get_Blocks_All(Key farm, Key group, Key type, Key variety);
    Recordset Get_ChemTarget();
    Recordset Get_ChemTarget_by_ID(Key target);
    QString ChemTarget_Is(Key target);
    QString CTarget_Is(Key target);
    /// Runs on the main database, which has no such table, so it always raises an error.
    Key CTargetID_Is(const QString &name);
    Key ActiveIngredientID_Is(const QString &name);
    /// Both set RecordTotal only when there are rows.
    Recordset Get_Pests_for_FruitType(Key type, const QString &kind);
    Recordset Get_Pests_for_ALL_FruitTypes(const QString &kind);

    // Monitoring: writers. An "out" key comes back in the first argument.
    Status New_Add_PMTrans(Key &PMTransID, Key method, SerialDate issued, const QString &notes, const QString &person, Int16 week,
                           bool repeat);
    Status Add_PMTrans(Key &PMTransID, Key block, Key method, SerialDate issued, const QString &notes, const QString &person,
                       Int16 points, Int16 week, bool completed, bool repeat);
    Status New_Add_PestData(Key instruction, Key block, Key target, Int16 point, const PointValues &values);
    Status Add_PestData(Key instruction, Key target, Int16 point, const PointValues &values);
    Status New_Add_PestDataMax(Key instruction, Key target, Key block, const TotalValues &values);
    Status Add_PestDataMax(Key instruction, Key target, const TotalValues &values);
    Status New_Add_Pest_for_Instruction(Key target);
    Status New_Add_Block_for_Instruction(Key block, Int16 points);
    Status Add_Pest_for_Report(Key target);
    Status Add_Block_for_Report(Key block);
    /// Leave an existing pair as it is.
    Status Add_Pest_for_Trans(Key instruction, Key target);
    Status New_Add_Block_for_Transaction(Key instruction, Key block, Int16 points);
    /// The saves do nothing when the key finds no row; Save_PestDataMax adds one.
    Status New_Save_PMTrans(Key &PMTransID, Key method, SerialDate issued, const QString &notes, const QString &person,
                            Int16 week, std::optional<SerialDate> dateCompleted, bool completed, bool repeat);
    Status Save_Pest_for_Trans(Key PMTarTransID, Key target, Key instruction);
    Status Save_PestData(Key &PMDataID, Key instruction, Key target, Int16 point, const PointValues &values, int selector);
    Status Save_PestDataMax(Key &PMDataMaxID, Key instruction, Key target, const TotalValues &values, int selector);
    Status Delete_PestMonTrans(Key instruction);
    Status Delete_PMData_for_Trans(Key instruction);
    Status Delete_PMDataMax_for_Trans(Key instruction);
    Status New_Delete_Block_for_Transaction(Key instruction, Key block);
    Status New_Delete_Pest_for_Transaction(Key instruction, Key target);
    Status Delete_Pest_for_Trans(Key instruction, Key target);
    Status New_Delete_Pest_for_Instruction(Key target);
    Status New_Delete_Block_for_Instruction(Key block);
    Status New_Delete_All_Pests_for_Instruction();
    Status New_Delete_All_Blocks_for_Instruction();
    Status Delete_Pest_for_Report(Key target);
    Status Delete_Block_for_Report(Key block);

    // Monitoring: reads.
    Recordset Get_PMTrans(Key instruction);
    /// The list of a period by issue date. FilterAll and FilterCompleted of the session choose.
    Recordset New_Get_PestTransactions(SerialDate from, SerialDate to);
    Recordset Get_PestTransaction_For_Block(Key block);
    Recordset Get_PestTransaction_For_BlockMethodYear(Key block, Key method, int year);
    Recordset New_Get_PestTransaction_For_BlockMethodYear(Key block, Key method, int year);
    Recordset Get_PMMethod_for_PMTrans(Key method);
    Recordset Get_PestMethod();
    Recordset Get_Pests_Trans(Key instruction, Key target);
    Recordset Get_Pests_For_Transaction(Key instruction);
    Recordset New_Get_Pests_For_Transaction(Key instruction);
    Recordset New_Get_Blocks_For_Transaction(Key instruction);
    Recordset New_Get_Pests_For_Instruction();
    Recordset New_Get_Blocks_For_Instruction();
    Recordset New_Fill_Pests_For_Instruction(Key target);
    Recordset New_Fill_Blocks_For_Instruction(Key block);
    Recordset Get_Pests_For_Report();
    Recordset Get_Blocks_For_Report();
    Recordset Fill_Pests_For_Report(Key target);
    Recordset Fill_Blocks_For_Report(Key block);
    Recordset Get_PestData_for_Transaction(Int16 point, Key target, Key instruction);
    Recordset New_Get_PestData_for_Transaction(Key instruction, Key block, Key target, Int16 point);
    /// Every detail row of a block in an instruction by point, target and key: what the two operations above and below give one
    /// by one, in a single set.
    Recordset Get_PestData_for_Block_of_Transaction(Key instruction, Key block);
    Recordset Get_GRAF_PestData_Count_for_Points(Key target, Key instruction);
    Recordset New_Get_GRAF_PestData_Count_for_Points(Key block, Key target, Key instruction);
    Recordset Get_PestDataMax_for_Transaction(Key target, Key instruction);
    Recordset New_Get_PestDataMax_for_Transaction(Key block, Key target, Key instruction);
    Recordset Get_PestData_Points_Transaction(Key instruction);
    Recordset Get_NN_PestData_Points_Transaction(Key instruction, Key block);
    Recordset New_Get_PestData_Points_TransBlock(Key instruction, Key block);
    Recordset Get_PestData_Points_Pest(Key target);
    Int16 No_of_Pests(Key instruction);
    Int16 New_No_of_MonPoints(Key instruction, Key block);
    Recordset Method_Used(Key instruction);
    Recordset Get_Methods_Used(Key instruction, Key target);

    /// How the period operations order: none, highest or lowest totals first. Any other number leaves the query empty.
    enum OrderMode : int { Unordered = 0, HighestFirst = 1, LowestFirst = 2 };
    Recordset Get_PestDataMax_for_Period_Pest_Block(Key block, SerialDate from, SerialDate to, Key method, int mode);
    Recordset Get_PestDataMax_for_Period_Block(Key target, SerialDate from, SerialDate to, Key method, int mode);
    Recordset New_Get_PestDataMax_for_Period_Pest_Block(Key block, Key target, SerialDate from, SerialDate to);
    /// By issue date; without a block, instructions that are not completed count too.
    Recordset New_Get_PestDataMaxYesNo_for_Period_Pest_Block(Key block, Key target, SerialDate from, SerialDate to);
    Recordset Get_PestData_for_Block(Key block, Key target, SerialDate from, SerialDate to);

    // Analyses. Plant values are N, P, K, Ca, Mg, Na, Mn, Fe, Cu, Zn, B.
    using PlantValues = std::array<float, 11>;
    Status Add_Leave_Analysis(Key &key, Key planting, SerialDate date, const QString &part, const QString &season,
                              const PlantValues &values);
    Status Add_Fruit_Analysis(Key &key, Key planting, SerialDate date, const QString &part, const QString &season,
                              const PlantValues &values);
    Status Save_Leave_Analysis(Key &key, Key planting, SerialDate date, const QString &part, const QString &season,
                               const PlantValues &values);
    Status Save_Fruit_Analysis(Key &key, Key planting, SerialDate date, const QString &part, const QString &season,
                               const PlantValues &values);
    /// The three soil saves add a row when the key finds none, and hand the new key back.
    /// Depth, Klip(%), pH(KCL), conductivity, KUV, clay, organic content. Klip(%) is kept in the field SBpHWater.
    Status Save_Soil_Analysis_Basic(Key &key, Key planting, SerialDate date, const std::array<float, 7> &values,
                                    const QString &texture);
    /// Zn, Cu, B, Mn, Fe, Mo.
    Status Save_Soil_Analysis_Micro(Key &key, Key planting, SerialDate date, const std::array<float, 6> &values);
    /// Depth, P (B1), P (Ohlson), K, Ca, Na, Mg, Cl, S, Al, P (B2).
    Status Save_Soil_Analysis_Extraction(Key &key, Key planting, SerialDate date, const std::array<float, 11> &values);
    Status Delete_Leave_Analysis(Key &key);
    Status Delete_Fruit_Analysis(Key &key);
    Status Delete_Soil_Analysis_Basic(Key &key);
    Status Delete_Soil_Analysis_Micro(Key &key);
    Status Delete_Soil_Analysis_Extract(Key &key);
    /// Analyses of a period with the block's name, by name then date; planting 0 is all. ShowActive of the session filters.
    Recordset Get_MonSoilBasic_for_Period(SerialDate from, SerialDate to, Key planting);
    Recordset Get_MonSoilMicro_for_Period(SerialDate from, SerialDate to, Key planting);
    Recordset Get_MonSoilExtract_for_Period(SerialDate from, SerialDate to, Key planting);
    Recordset Get_MonLeave_for_Period(SerialDate from, SerialDate to, Key planting);
    Recordset Get_MonFruit_for_Period(SerialDate from, SerialDate to, Key planting);
    Recordset Get_MonSoilBasic_byID(Key key);
    Recordset Get_MonSoilMicro_byID(Key key);
    Recordset Get_MonLeave_byID(Key key);
    Recordset Get_MonSoilExtract_byID(Key key);
    Recordset Get_FertTransactions_for_Period(SerialDate from, SerialDate to);

private:
    Recordset mainRows(const QString &sql) const;
    Recordset pestRows(const QString &sql) const;
    Recordset sprayRows(const QString &sql) const;
    /// Runs a writer's body on the pest database and turns its error into a status.
    Status write(const std::function<void(dao::Database &)> &body);
    Status deleteFirst(store::KeyedTable table, const QString &condition);

    SessionContext &session_;
    std::optional<basic::RunTimeError> lastError_;
    std::function<void()> beforeFirstWriteOfDay_;
    QDate lastWriteDay_;
};
