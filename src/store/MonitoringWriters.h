// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/MonitoringRows.h"
#include "store/StoreAccess.h"

namespace store
{

/// Writers of instructions, their results and the selection tables. The key of a new row comes back in the first argument.
class MonitoringWriters
{
public:
    Status New_Add_PMTrans(Key &PMTransID, Key method, SerialDate issued, const QString &notes, const QString &person, Int16 week,
                           bool repeat);
    Status New_Add_PestData(Key instruction, Key block, Key target, Int16 point, const PointValues &values);
    Status New_Add_PestDataMax(Key instruction, Key target, Key block, const TotalValues &values);
    Status New_Add_Pest_for_Instruction(Key target);
    Status New_Add_Block_for_Instruction(Key block, Int16 points);
    /// Both leave an existing pair as it is.
    Status Add_Pest_for_Trans(Key instruction, Key target);
    Status New_Add_Block_for_Transaction(Key instruction, Key block, Int16 points);
    /// The saves do nothing when the key finds no row; Save_PestDataMax adds one.
    Status New_Save_PMTrans(Key &PMTransID, Key method, SerialDate issued, const QString &notes, const QString &person,
                            Int16 week, std::optional<SerialDate> dateCompleted, bool completed, bool repeat);
    Status Save_PestData(Key &PMDataID, Key instruction, Key target, Int16 point, const PointValues &values, int selector);
    Status Save_PestDataMax(Key &PMDataMaxID, Key instruction, Key target, const TotalValues &values, int selector);
    Status Delete_PestMonTrans(Key instruction);
    Status Delete_PMData_for_Trans(Key instruction);
    Status Delete_PMDataMax_for_Trans(Key instruction);
    Status New_Delete_Block_for_Transaction(Key instruction, Key block);
    Status New_Delete_Pest_for_Transaction(Key instruction, Key target);
    Status New_Delete_Pest_for_Instruction(Key target);
    Status New_Delete_Block_for_Instruction(Key block);

protected:
    explicit MonitoringWriters(StoreAccess &access) : access_(access) {}
    ~MonitoringWriters() = default;

private:
    StoreAccess &access_;
};

} // namespace store
