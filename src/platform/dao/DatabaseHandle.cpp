// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/DatabaseHandle.h"

namespace dao
{

void DatabaseHandle::setFailure(const QString &fileName, const QString &reason)
{
    database_.reset();
    failure_ = QStringLiteral("%1 could not be opened: %2").arg(fileName, reason);
}

Database &DatabaseHandle::get() const
{
    if (!database_) {
        throw basic::RunTimeError(basic::ErrorNumber::ObjectNotSet,
                                  failure_.isEmpty() ? QStringLiteral("The database was not opened.") : failure_);
    }
    return *database_;
}

} // namespace dao
