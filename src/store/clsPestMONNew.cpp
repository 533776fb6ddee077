// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/clsPestMONNew.h"

clsPestMONNew::clsPestMONNew(SessionContext &session)
    : StoreAccess(session), ReferenceQueries(access()), MonitoringQueries(access()), MonitoringWriters(access()),
      PeriodQueries(access()), AnalysisOperations(access()), UnusedOperations(access())
{
}
