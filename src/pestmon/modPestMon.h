// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/clsPestMONNew.h"

namespace pestmon
{

/// The steps of issuing, saving and repeating a monitoring instruction, without a widget. Each works on the session's current
/// instruction. A status of 1 ends a step; what was written before remains.

/// Empties the two working tables of chosen blocks and pests.
clsPestMONNew::Status Clear_Instruction(clsPestMONNew &objPestMON);

/// Copies the blocks and pests of an instruction to the working tables.
clsPestMONNew::Status Load_Selection(clsPestMONNew &objPestMON, clsPestMONNew::Key instruction);

/// Adds the blocks and pests of the working tables to an instruction. Existing pairs are not changed.
clsPestMONNew::Status Store_Selection(clsPestMONNew &objPestMON, clsPestMONNew::Key instruction);

/// One zero row per block, point and pest of an instruction, in this order; the totals likewise, without the point, so that a
/// pair has as many total rows as the block has points.
clsPestMONNew::Status Create_PMData(clsPestMONNew &objPestMON, clsPestMONNew::Key instruction);
clsPestMONNew::Status Create_PMDataMax(clsPestMONNew &objPestMON, clsPestMONNew::Key instruction);

/// Saves the current instruction with the chosen blocks and pests and adds its zero rows to the existing ones, less one row per
/// table. CurrentPMTransID gets the key of a new one. One write scope. RepeatDone is True while rows are added, False at the end.
clsPestMONNew::Status Save_Instruction(SessionContext &session, clsPestMONNew &objPestMON);

/// Issues the successor of the current instruction: same values, blocks and pests, new zero rows. Completely or not at all.
/// CurrentPMTransID does not change.
clsPestMONNew::Status Repeat_Instruction(SessionContext &session, clsPestMONNew &objPestMON);

} // namespace pestmon
