// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/StoreAccess.h"

#include "platform/basic/Clock.h"

namespace store
{

Status StoreAccess::write(const std::function<void(dao::Database &)> &body)
{
    lastError_.reset();
    if (!session_.ViewOnlyReason.isEmpty()) {
        lastError_.emplace(static_cast<int>(dao::DataErrorNumber::ReadOnly), session_.ViewOnlyReason);
        return Failed;
    }
    if (const QDate today = basic::Clock::today(); today != lastWriteDay_) {
        lastWriteDay_ = today;
        if (beforeFirstWriteOfDay_) {
            beforeFirstWriteOfDay_();
        }
    }
    try {
        body(*session_.dbPest);
        return Done;
    } catch (const basic::RunTimeError &error) {
        lastError_ = error;
        return Failed;
    }
}

Status StoreAccess::deleteFirst(KeyedTable table, const QString &condition)
{
    return write([&](dao::Database &database) { store::deleteFirst(database, table, condition); });
}

} // namespace store
