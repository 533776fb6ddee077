// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/AnalysisRecord.h"
#include "platform/basic/SerialDate.h"
#include "platform/dao/DatabaseHandle.h"

#include <QString>

#include <cstdint>
#include <optional>

/// The values that all screens share, one set for the process. Owned by the main window, passed by reference.
/// Keys are 0 when nothing is selected.
struct SessionContext {
    /// The program's folder, without a separator at the end, and its "Databases" folder.
    QString AppPath;
    QString DatabasePath;
    QString MainDBFile;
    QString PestDBFile;
    /// Why the farm is only shown: another program has it open. Empty in ordinary work; otherwise every write is refused with it.
    QString ViewOnlyReason;
    dao::DatabaseHandle dbMain;
    dao::DatabaseHandle dbPest;
    dao::DatabaseHandle dbSpray;

    std::int32_t CurrentFarmID = 0;
    QString CurrentFarm;
    /// Stored like the farm pair; nothing reads them.
    std::int32_t CurrentYearID = 0;
    QString CurrentYear;
    /// Start of the last period as text yyyy/MM/dd, or 01/01/yyyy before one was chosen; stored in FindSDate.txt.
    QString CurrentSDate;
    /// False until the start has ended, then true for good: a closing screen brings the menu back.
    bool MenuRestore = false;

    /// The current instruction. CurrentPMTransID 0 is a new, unsaved one or none.
    std::int32_t CurrentPMTransID = 0;
    std::int32_t CurrentPMMethodID = 0;
    QString CurrentPMMethod;
    basic::SerialDate CurrentPMDate;
    /// Nothing until a completion date was met in the session; a date left over from another row stays.
    std::optional<basic::SerialDate> CurrentPMDateCom;
    bool CurrentPMCom = false;
    bool CurrentPMRepeat = false;
    std::int16_t CurrentPMWeek = 0;
    QString CurrentPMPerson;
    QString CurrentPMNotes;
    /// True: the next save of a capture issues no successor.
    bool RepeatDone = false;

    std::int32_t CurrentBlockID = 0;
    std::int16_t CurrentNoofMpoints = 0;
    QString CurrentBlockName;
    std::int32_t CurrentCTargetID = 0;
    QString CurrentCTarget;
    /// Order of the lists of the graphs: 0 none, 1 the largest sums first, 2 the smallest.
    std::int16_t GraphRankMode = 0;
    /// "D", "P", "W", "O", or empty for all.
    QString PestTypeFilter;

    /// Remembered position in the list of instructions or analyses.
    int ListRow = 0;
    int ListCol = 0;

    /// Which instructions the list shows; FilterAll wins over FilterCompleted.
    bool FilterCompleted = false;
    bool FilterAll = false;

    /// Filters of the analyses; 0 is no filter. ShowActive is -1 for active plantings, 0 for the others.
    std::int32_t FilterCrGrID = 0;
    std::int32_t FilterCrTyID = 0;
    std::int32_t FilterCrVaID = 0;
    std::int32_t ShowActive = -1;

    /// The planting of the block filter, and of the record in the entry panel: one value serves both.
    std::int32_t CurrentPlantBlockID = 0;
    /// Its ID outlives the screens; a list without rows leaves it.
    AnalysisRecord CurrentAnalysis;
};
