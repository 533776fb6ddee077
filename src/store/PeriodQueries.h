// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/StoreAccess.h"

namespace store
{

/// How the period operations order: none, highest or lowest totals first. Any other number leaves the query empty.
enum OrderMode : int { Unordered = 0, HighestFirst = 1, LowestFirst = 2 };

/// What was found in a period: rankings of pests and blocks, total rows and detail rows.
class PeriodQueries
{
public:
    Recordset Get_PestDataMax_for_Period_Pest_Block(Key block, SerialDate from, SerialDate to, Key method, int mode);
    Recordset Get_PestDataMax_for_Period_Block(Key target, SerialDate from, SerialDate to, Key method, int mode);
    Recordset New_Get_PestDataMax_for_Period_Pest_Block(Key block, Key target, SerialDate from, SerialDate to);
    /// By issue date; without a block, instructions that are not completed count too.
    Recordset New_Get_PestDataMaxYesNo_for_Period_Pest_Block(Key block, Key target, SerialDate from, SerialDate to);
    /// The sums of the totals of both operations above, one row per completed instruction that has one: PMTransDateCom,
    /// PMTransWeek, Amount (of counts the sum, of answers the number of Yes) and Highest (the highest total). Rows without a
    /// value, and answers that are No, are left out.
    Recordset sumsOfPeriod(Key method, Key block, Key target, SerialDate from, SerialDate to);
    Recordset Get_PestData_for_Block(Key block, Key target, SerialDate from, SerialDate to);

protected:
    explicit PeriodQueries(StoreAccess &access) : access_(access) {}
    ~PeriodQueries() = default;

private:
    StoreAccess &access_;
};

} // namespace store
