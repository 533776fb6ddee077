// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/Period.h"

#include "common/HandOffFiles.h"
#include "platform/basic/Clock.h"
#include "platform/basic/Formats.h"
#include "platform/controls/DatePicker.h"
#include "screens/ScreenHost.h"

void showPeriod(ScreenHost &host, controls::DatePicker &from, controls::DatePicker &to)
{
    SessionContext &session = host.session();
    const QDate today = basic::Clock::today();
    if (session.CurrentSDate.isEmpty()) {
        session.CurrentSDate = QStringLiteral("01/01/%1").arg(basic::formatDate(today, u"yyyy"));
    }
    from.setValue(basic::dateFromText(session.CurrentSDate));
    to.setValue(today);
}

void readPeriodStart(ScreenHost &host)
{
    const QString unreadable = Read_FindSDate(host.session());
    if (!unreadable.isEmpty()) {
        host.showFailure(unreadable);
    }
}

void storePeriodStart(SessionContext &session, const controls::DatePicker &from)
{
    session.CurrentSDate = basic::formatDate(from.Value(), u"yyyy/MM/dd");
    Write_FindSDate(session);
}
