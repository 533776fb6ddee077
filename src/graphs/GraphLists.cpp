// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphs/GraphLists.h"

#include "common/SessionContext.h"
#include "platform/controls/ItemCombo.h"
#include "store/clsPestMONNew.h"

#include <vector>

using basic::SerialDate;

namespace
{

struct Entry {
    QString name;
    std::int32_t key;
};

void fill(GraphCombos combos, const std::vector<Entry> &entries)
{
    for (controls::ItemCombo *combo : combos) {
        combo->Clear();
        for (const Entry &entry : entries) {
            combo->AddItem(entry.name, entry.key);
        }
    }
}

} // namespace

void Fill_Graph_Pests(GraphCombos combos, clsPestMONNew &objPestMON, const SessionContext &session, std::int32_t block,
                      const GraphListPeriod &period)
{
    std::vector<Entry> entries;
    dao::Recordset keys = objPestMON.Get_PestDataMax_for_Period_Pest_Block(
        block, SerialDate::fromDate(period.from), SerialDate::fromDate(period.to), session.CurrentPMMethodID, period.rankMode);
    for (; !keys.Eof(); keys.MoveNext()) {
        const std::int32_t key = keys.longValue(0);
        const dao::Recordset pest = objPestMON.Get_ChemTarget_by_ID(key);
        if (!pest.Eof()) {
            entries.push_back({pest.text("ChemTarget"), pest.longValue("CTargetID")});
        }
    }
    fill(combos, entries);
}

void Fill_Graph_Blocks(GraphCombos combos, clsPestMONNew &objPestMON, const SessionContext &session,
                       const GraphListPeriod &period)
{
    std::vector<Entry> entries;
    dao::Recordset keys =
        objPestMON.Get_PestDataMax_for_Period_Block(session.CurrentCTargetID, SerialDate::fromDate(period.from),
                                                    SerialDate::fromDate(period.to), session.CurrentPMMethodID, period.rankMode);
    for (; !keys.Eof(); keys.MoveNext()) {
        const std::int32_t key = keys.longValue(0);
        if (key <= 0) {
            continue;
        }
        const dao::Recordset block = objPestMON.Get_Block_byID(key);
        if (!block.Eof()) {
            entries.push_back({block.text("Block"), block.longValue("BlockID")});
        }
    }
    fill(combos, entries);
}

void preselect(GraphCombos combos)
{
    for (int index = 0; index < static_cast<int>(combos.size()); ++index) {
        controls::ItemCombo &combo = *combos[static_cast<std::size_t>(index)];
        if (combo.ListCount() > index) {
            combo.setListIndex(index);
        }
    }
}
