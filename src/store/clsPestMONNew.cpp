// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/clsPestMONNew.h"

#include "platform/basic/Clock.h"
#include "store/Rows.h"

clsPestMONNew::clsPestMONNew(SessionContext &session) : session_(session) {}

clsPestMONNew::Recordset clsPestMONNew::mainRows(const QString &sql) const
{
    return session_.dbMain->OpenRecordset(sql);
}

clsPestMONNew::Recordset clsPestMONNew::pestRows(const QString &sql) const
{
    return session_.dbPest->OpenRecordset(sql);
}

clsPestMONNew::Recordset clsPestMONNew::sprayRows(const QString &sql) const
{
    return session_.dbSpray->OpenRecordset(sql);
}

clsPestMONNew::Status clsPestMONNew::write(const std::function<void(dao::Database &)> &body)
{
    lastError_.reset();
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

clsPestMONNew::Status clsPestMONNew::deleteFirst(store::KeyedTable table, const QString &condition)
{
    return write([&](dao::Database &database) { store::deleteFirst(database, table, condition); });
}
