// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/StoreAccess.h"

namespace store
{

/// Reads instructions, their results and the selection tables. Where a statement's own order leaves ties, the key decides, so
/// that the first of several rows with the same keys is always the oldest.
class MonitoringQueries
{
public:
    /// The list of a period by issue date. FilterAll and FilterCompleted of the session choose.
    Recordset New_Get_PestTransactions(SerialDate from, SerialDate to);
    Recordset Get_PMMethod_for_PMTrans(Key method);
    Recordset Get_PestMethod();
    Recordset Get_Pests_For_Transaction(Key instruction);
    Recordset New_Get_Pests_For_Transaction(Key instruction);
    Recordset New_Get_Blocks_For_Transaction(Key instruction);
    Recordset New_Get_Pests_For_Instruction();
    Recordset New_Get_Blocks_For_Instruction();
    Recordset New_Fill_Pests_For_Instruction(Key target);
    Recordset New_Fill_Blocks_For_Instruction(Key block);
    /// Every detail row of a block in an instruction by point, target and key, in a single set.
    Recordset Get_PestData_for_Block_of_Transaction(Key instruction, Key block);
    Recordset New_Get_PestDataMax_for_Transaction(Key block, Key target, Key instruction);
    Recordset Get_NN_PestData_Points_Transaction(Key instruction, Key block);
    Recordset Get_PestData_Points_Pest(Key target);
    Int16 No_of_Pests(Key instruction);

protected:
    explicit MonitoringQueries(StoreAccess &access) : access_(access) {}
    ~MonitoringQueries() = default;

private:
    StoreAccess &access_;
};

} // namespace store
