// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace controls
{
class ItemCombo;
}
class clsPestMONNew;
struct SessionContext;

/// Fill a list from a query, one entry with its key per row. Each clears the list first and raises no selection. An error of the
/// query is raised and leaves the list empty.
void Fill_Farm_Combo(controls::ItemCombo &combo, clsPestMONNew &objPestMON);
void Fill_CrGroup_Combo(controls::ItemCombo &combo, clsPestMONNew &objPestMON);
void Fill_CrType_Combo(controls::ItemCombo &combo, clsPestMONNew &objPestMON, int group);
void Fill_CrVariety_Combo(controls::ItemCombo &combo, clsPestMONNew &objPestMON, int type);
void Fill_BlockPlant_Combo(controls::ItemCombo &combo, clsPestMONNew &objPestMON, const SessionContext &session);
/// The active plantings of the copy in the pest database, by name.
void Fill_Block_Combo_Temp(controls::ItemCombo &combo, SessionContext &session);
/// Leaves out workers without a nickname.
void Fill_Worker_Combo(controls::ItemCombo &combo, clsPestMONNew &objPestMON);

/// For key code 13, Enter, moves the focus as Tab does.
void Key_Enter_To_Tab(int keyCode);
