// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Catalog.h"

#include <QStringList>

namespace dao
{

/// The stored values of a table that its declared fields cannot hold, one sentence each with table, row and field: another type,
/// a number beyond the range, a text that is too long. At most MaxListed of them, then their number.
QStringList mismatchesOf(const Connection &connection, const TableInfo &table);
inline constexpr int MaxListed = 100;

} // namespace dao
