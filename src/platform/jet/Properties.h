// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <utility>
#include <vector>

namespace jet
{

/// The property AllowZeroLength by the column's name in lower case, for the columns that have it, from the blob that the
/// catalogue keeps for a table.
QHash<QString, bool> allowZeroLengthByColumn(Bytes blob);
/// Such a blob, by the column's name.
QByteArray allowZeroLengthBlob(const std::vector<std::pair<QString, bool>> &columns);

} // namespace jet
