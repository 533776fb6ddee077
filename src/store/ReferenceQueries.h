// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/StoreAccess.h"

namespace store
{

/// Farms, workers, crops, blocks and targets. Where a statement's own order leaves ties, the key decides.
class ReferenceQueries
{
public:
    Recordset Get_Farms();
    Recordset Get_Workers();
    /// Groups planted on the current farm.
    Recordset Get_CropGroup_for_Farm();
    Recordset GetCrType(Key group);
    Recordset GetCrVariety(Key type);
    Recordset Get_Block_byID(Key block);
    /// The active blocks of all farms, whatever the argument. Sets RecordTotal.
    Recordset XGet_PestBlocks_for_Farms(Key farm);
    Int16 NoofMPoints_Are(Key block);
    Recordset Get_BlocksPlant_Variety_for_Block(Key block);
    /// BlockPID, Variety, CrGrIDD, CrTyIDD and CrVaIDD of every planting: what the operation above gives one by one, in a single
    /// set without an order.
    Recordset Get_BlocksPlant_Variety_for_All();
    /// The most specific of the three filters counts; the group filter alone lists inactive plantings too. Sets RecordTotal.
    Recordset Get_Blocks_All(Key farm, Key group, Key type, Key variety);
    Recordset Get_ChemTarget_by_ID(Key target);
    QString ChemTarget_Is(Key target);
    QString CTarget_Is(Key target);
    /// Sets RecordTotal only when there are rows.
    Recordset Get_Pests_for_ALL_FruitTypes(const QString &kind);

protected:
    explicit ReferenceQueries(StoreAccess &access) : access_(access) {}
    ~ReferenceQueries() = default;

private:
    StoreAccess &access_;
};

} // namespace store
