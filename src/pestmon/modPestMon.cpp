// SPDX-License-Identifier: GPL-3.0-or-later
#include "pestmon/modPestMon.h"

#include "platform/dao/CommitScope.h"
#include "platform/dao/Database.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <vector>

namespace pestmon
{

namespace
{

using Status = clsPestMONNew::Status;
using Key = clsPestMONNew::Key;
constexpr Status Done = clsPestMONNew::Done;
constexpr Status Failed = clsPestMONNew::Failed;

struct ChosenBlock {
    Key block;
    std::int16_t points;
};

std::vector<ChosenBlock> readBlocks(dao::Recordset rows)
{
    std::vector<ChosenBlock> blocks;
    for (; !rows.Eof(); rows.MoveNext()) {
        blocks.push_back({rows.longValue("BlockID"), static_cast<std::int16_t>(rows.longValue("NoofMpoints"))});
    }
    return blocks;
}

std::vector<Key> readPests(dao::Recordset rows)
{
    std::vector<Key> pests;
    for (; !rows.Eof(); rows.MoveNext()) {
        pests.push_back(rows.longValue("CTargetID"));
    }
    return pests;
}

/// Runs a writer for every item; the first failure ends it.
template <typename Items, typename Writer> Status forEach(const Items &items, Writer writer)
{
    const bool allDone = std::all_of(items.begin(), items.end(), [&](const auto &item) { return writer(item) == Done; });
    return allDone ? Done : Failed;
}

/// Runs the writers in order until one fails.
template <typename... Writers> Status inOrder(Writers... writers)
{
    return ((writers() == Done) && ...) ? Done : Failed;
}

/// Calls `addRow(block, point, pest)` for every block, point and pest of an instruction.
template <typename AddRow> Status forEachPoint(clsPestMONNew &objPestMON, Key instruction, AddRow addRow)
{
    const auto blocks = readBlocks(objPestMON.New_Get_Blocks_For_Transaction(instruction));
    const auto pests = readPests(objPestMON.Get_Pests_For_Transaction(instruction));
    return forEach(blocks, [&](const ChosenBlock &chosen) {
        for (int point = 1; point <= chosen.points; ++point) {
            const auto addPest = [&](Key pest) { return addRow(chosen.block, static_cast<std::int16_t>(point), pest); };
            if (forEach(pests, addPest) == Failed) {
                return Failed;
            }
        }
        return Done;
    });
}

/// Deletes one row of each table of results, then adds the full set of zero rows.
Status addZeroRows(clsPestMONNew &objPestMON, Key instruction)
{
    return inOrder([&] { return objPestMON.Delete_PMData_for_Trans(instruction); },
                   [&] { return objPestMON.Delete_PMDataMax_for_Trans(instruction); },
                   [&] { return Create_PMData(objPestMON, instruction); },
                   [&] { return Create_PMDataMax(objPestMON, instruction); });
}

Status addTransaction(SessionContext &session, clsPestMONNew &objPestMON, Key &key)
{
    return objPestMON.New_Add_PMTrans(key, session.CurrentPMMethodID, session.CurrentPMDate, session.CurrentPMNotes,
                                      session.CurrentPMPerson, session.CurrentPMWeek, session.CurrentPMRepeat);
}

Status saveTransaction(SessionContext &session, clsPestMONNew &objPestMON)
{
    if (session.CurrentPMTransID == 0) {
        Key key = 0;
        const Status status = addTransaction(session, objPestMON, key);
        if (status == Done) {
            session.CurrentPMTransID = key;
        }
        return status;
    }
    return objPestMON.New_Save_PMTrans(session.CurrentPMTransID, session.CurrentPMMethodID, session.CurrentPMDate,
                                       session.CurrentPMNotes, session.CurrentPMPerson, session.CurrentPMWeek,
                                       session.CurrentPMDateCom, session.CurrentPMCom, session.CurrentPMRepeat);
}

} // namespace

Status Clear_Instruction(clsPestMONNew &objPestMON)
{
    const auto blocks = readBlocks(objPestMON.New_Get_Blocks_For_Instruction());
    const auto pests = readPests(objPestMON.New_Get_Pests_For_Instruction());
    return inOrder(
        [&] {
            return forEach(blocks,
                           [&](const ChosenBlock &chosen) { return objPestMON.New_Delete_Block_for_Instruction(chosen.block); });
        },
        [&] { return forEach(pests, [&](Key pest) { return objPestMON.New_Delete_Pest_for_Instruction(pest); }); });
}

Status Load_Selection(clsPestMONNew &objPestMON, Key instruction)
{
    const auto blocks = readBlocks(objPestMON.New_Get_Blocks_For_Transaction(instruction));
    const auto pests = readPests(objPestMON.New_Get_Pests_For_Transaction(instruction));
    return inOrder(
        [&] {
            return forEach(blocks, [&](const ChosenBlock &chosen) {
                return objPestMON.New_Add_Block_for_Instruction(chosen.block, chosen.points);
            });
        },
        [&] { return forEach(pests, [&](Key pest) { return objPestMON.New_Add_Pest_for_Instruction(pest); }); });
}

Status Store_Selection(clsPestMONNew &objPestMON, Key instruction)
{
    const auto blocks = readBlocks(objPestMON.New_Get_Blocks_For_Instruction());
    const auto pests = readPests(objPestMON.New_Get_Pests_For_Instruction());
    return inOrder(
        [&] {
            return forEach(blocks, [&](const ChosenBlock &chosen) {
                return objPestMON.New_Add_Block_for_Transaction(instruction, chosen.block, chosen.points);
            });
        },
        [&] { return forEach(pests, [&](Key pest) { return objPestMON.Add_Pest_for_Trans(instruction, pest); }); });
}

Status Create_PMData(clsPestMONNew &objPestMON, Key instruction)
{
    return forEachPoint(objPestMON, instruction, [&](Key block, std::int16_t point, Key pest) {
        return objPestMON.New_Add_PestData(instruction, block, pest, point, {});
    });
}

Status Create_PMDataMax(clsPestMONNew &objPestMON, Key instruction)
{
    return forEachPoint(objPestMON, instruction, [&](Key block, std::int16_t, Key pest) {
        return objPestMON.New_Add_PestDataMax(instruction, pest, block, {});
    });
}

Status Save_Instruction(SessionContext &session, clsPestMONNew &objPestMON)
{
    // When the whole scope is rolled back, on a full disk say, its key does not exist.
    QScopedValueRollback key(session.CurrentPMTransID);
    dao::CommitScope scope(*session.dbPest);
    const auto write = [&] {
        return inOrder([&] { return saveTransaction(session, objPestMON); },
                       [&] { return Store_Selection(objPestMON, session.CurrentPMTransID); },
                       [&] {
                           session.RepeatDone = true;
                           return addZeroRows(objPestMON, session.CurrentPMTransID);
                       });
    };
    const auto commit = [&] {
        scope.commit();
        key.commit();
    };
    Status status = Failed;
    try {
        status = write();
    } catch (const basic::RunTimeError &) {
        // The steps before an error are stored, as those before a failed one are, and so is their key.
        commit();
        throw;
    }
    commit();
    if (status == Done) {
        session.RepeatDone = false;
    }
    return status;
}

Status Repeat_Instruction(SessionContext &session, clsPestMONNew &objPestMON)
{
    dao::CommitScope scope(*session.dbPest);
    Key successor = 0;
    const auto write = [&] {
        return inOrder(
            [&] { return Clear_Instruction(objPestMON); }, [&] { return Load_Selection(objPestMON, session.CurrentPMTransID); },
            [&] { return addTransaction(session, objPestMON, successor); },
            [&] { return Store_Selection(objPestMON, successor); }, [&] { return addZeroRows(objPestMON, successor); });
    };
    // An incomplete successor would stay, and each further save would add another.
    try {
        const Status status = write();
        status == Done ? scope.commit() : scope.rollback();
        return status;
    } catch (const basic::RunTimeError &) {
        scope.rollback();
        throw;
    }
}

} // namespace pestmon
