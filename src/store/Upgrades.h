// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/SessionContext.h"

#include "platform/dao/TableDef.h"

#include <QString>

#include <functional>

/// The in-place upgrades of the pest database and the block copy, run in this order at every start. Errors go to the caller
/// unless said otherwise.
namespace store
{

/// The name when the pest database has the table, or when asking failed in any way but 3265; else empty.
QString TestTableExists(SessionContext &session, const QString &table);

/// Whether the table has the field, without regard to case.
bool ObjectExists(const dao::TableDef &table, const QString &field);

/// Makes tblTempBlockPlant when it is missing. Each failing step is passed to `report`, then the next step runs.
void Ensure_TempBlockTable(SessionContext &session, const std::function<void(const basic::RunTimeError &)> &report);

/// Adds tblPMTrans.PMRepeat when it is missing and sets it False in all rows. Any error ends it silently.
void Ensure_PMRepeatField(SessionContext &session);

/// Gives an older file the current indexes and removes those that they replace. An index only saves time, so a file that cannot
/// take it can be used as it is: an error leaves that table unchanged and goes to the caller.
void Ensure_Indexes(SessionContext &session);

/// Mirrors the plantings of the main database into tblTempBlockPlant. Only rows that differ are written.
void Update_TempBlock(SessionContext &session);

/// Writes the week of every completed instruction whose stored week differs from that of its completion date.
void Recalc_PMTransWeek(SessionContext &session);

} // namespace store
