// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/SessionContext.h"
#include "platform/dao/Recordset.h"
#include "store/Rows.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

namespace store
{

using Key = std::int32_t;
using Int16 = std::int16_t;
using Status = int;
using basic::SerialDate;
using dao::Recordset;

/// What the groups of operations share: the session's databases, the status of the last writer, the number of rows listed.
class StoreAccess
{
public:
    static constexpr Status Done = 0;
    static constexpr Status Failed = 1;

    explicit StoreAccess(SessionContext &session) : session_(session) {}

    const SessionContext &session() const { return session_; }
    Recordset mainRows(const QString &sql) const { return session_.dbMain->OpenRecordset(sql); }
    Recordset pestRows(const QString &sql) const { return session_.dbPest->OpenRecordset(sql); }
    Recordset sprayRows(const QString &sql) const { return session_.dbSpray->OpenRecordset(sql); }
    /// Runs a writer's body on the pest database and turns its error into a status.
    Status write(const std::function<void(dao::Database &)> &body);
    Status deleteFirst(KeyedTable table, const QString &condition);

    /// Rows of the last list query that counts; see each of them for what an empty result does.
    int RecordTotal = 0;
    /// Why the last writer returned 1; empty after one that returned 0.
    const std::optional<basic::RunTimeError> &lastError() const { return lastError_; }
    /// What is to be done before the first write of each day; it must not raise errors.
    void setBeforeFirstWriteOfDay(std::function<void()> body) { beforeFirstWriteOfDay_ = std::move(body); }

private:
    SessionContext &session_;
    std::optional<basic::RunTimeError> lastError_;
    std::function<void()> beforeFirstWriteOfDay_;
    QDate lastWriteDay_;
};

} // namespace store
