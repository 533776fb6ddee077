// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/ListFillers.h"

#include "common/SessionContext.h"
#include "common/grid/CellEditor.h"
#include "platform/controls/ItemCombo.h"
#include "store/clsPestMONNew.h"

using controls::ItemCombo;

namespace
{

enum class NullTexts { Shown, LeftOut };

/// The list is cleared before the query, which may fail: old entries must not remain.
template <typename Query>
void fill(ItemCombo &combo, Query query, QStringView text, QStringView key, NullTexts nullTexts = NullTexts::Shown)
{
    combo.Clear();
    dao::Recordset rows = query();
    if (rows.Eof()) {
        return;
    }
    const int textField = rows.fieldIndex(text);
    const int keyField = rows.fieldIndex(key);
    for (; !rows.Eof(); rows.MoveNext()) {
        if (nullTexts == NullTexts::Shown || !rows.isNull(textField)) {
            combo.AddItem(rows.text(textField), rows.longValue(keyField));
        }
    }
    rows.Close();
}

} // namespace

void Fill_Farm_Combo(ItemCombo &combo, clsPestMONNew &objPestMON)
{
    fill(
        combo, [&] { return objPestMON.Get_Farms(); }, u"Farm", u"FarmID");
}

void Fill_CrGroup_Combo(ItemCombo &combo, clsPestMONNew &objPestMON)
{
    fill(
        combo, [&] { return objPestMON.Get_CropGroup_for_Farm(); }, u"Group", u"CrGrID");
}

void Fill_CrType_Combo(ItemCombo &combo, clsPestMONNew &objPestMON, int group)
{
    fill(
        combo, [&] { return objPestMON.GetCrType(group); }, u"Type", u"CrTyID");
}

void Fill_CrVariety_Combo(ItemCombo &combo, clsPestMONNew &objPestMON, int type)
{
    fill(
        combo, [&] { return objPestMON.GetCrVariety(type); }, u"Variety", u"CrVaID");
}

void Fill_BlockPlant_Combo(ItemCombo &combo, clsPestMONNew &objPestMON, const SessionContext &session)
{
    const auto filtered = [&] {
        return objPestMON.Get_Blocks_All(session.CurrentFarmID, session.FilterCrGrID, session.FilterCrTyID, session.FilterCrVaID);
    };
    fill(combo, filtered, u"PBlock", u"BlockPID");
}

void Fill_Block_Combo_Temp(ItemCombo &combo, SessionContext &session)
{
    const QString sql = QStringLiteral("SELECT * FROM tblTempBlockPlant where PBActive = True ORDER BY tPBlock");
    fill(
        combo, [&] { return session.dbPest->OpenRecordset(sql); }, u"tPBlock", u"tBlockPID");
}

void Fill_Worker_Combo(ItemCombo &combo, clsPestMONNew &objPestMON)
{
    fill(
        combo, [&] { return objPestMON.Get_Workers(); }, u"WNickName", u"WorkerID", NullTexts::LeftOut);
}

void Key_Enter_To_Tab(int keyCode)
{
    constexpr int enter = 13;
    if (keyCode == enter) {
        Send_Keys(QStringLiteral("{TAB}"), false);
    }
}
