// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/AnalysisOperations.h"
#include "store/MonitoringQueries.h"
#include "store/MonitoringWriters.h"
#include "store/PeriodQueries.h"
#include "store/ReferenceQueries.h"
#include "store/UnusedOperations.h"

/// The one data-access class. Every operation goes through the session's database handles.
///
/// A Get_ operation returns an open set on its first row, a snapshot unless said otherwise. Operations ending in _Is, _Name, _ID
/// or _Are return one field of the first row, or "" or 0 when there is none. Both let errors pass to the caller.
/// A writer returns its status: 0 done, 1 an error, in which case nothing of the failed row is written and lastError() has the
/// cause. A period includes its first and its last day. A delete operation removes one row, the one with the lowest key that its
/// query finds, whatever its name says.
class clsPestMONNew : private store::StoreAccess,
                      public store::ReferenceQueries,
                      public store::MonitoringQueries,
                      public store::MonitoringWriters,
                      public store::PeriodQueries,
                      public store::AnalysisOperations,
                      public store::UnusedOperations
{
public:
    using Key = store::Key;
    using Int16 = store::Int16;
    using Status = store::Status;
    using Recordset = dao::Recordset;
    using PointValues = store::PointValues;
    using TotalValues = store::TotalValues;
    using FieldSelector = store::FieldSelector;
    using enum store::FieldSelector;
    using enum store::OrderMode;
    using StoreAccess::Done;
    using StoreAccess::Failed;

    explicit clsPestMONNew(SessionContext &session);
    clsPestMONNew(const clsPestMONNew &) = delete;
    clsPestMONNew &operator=(const clsPestMONNew &) = delete;

    using StoreAccess::lastError;
    using StoreAccess::RecordTotal;
    using StoreAccess::setBeforeFirstWriteOfDay;

private:
    StoreAccess &access() { return *this; }
};
