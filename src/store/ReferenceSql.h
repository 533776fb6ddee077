// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/StoreAccess.h"

#include <QString>

namespace store
{

/// One field of the first row; 0 or an empty text when there is none.
Key firstNumber(const Recordset &rows, QStringView field);
QString firstText(const Recordset &rows, QStringView field);

inline constexpr QStringView EveryField = u"*, tblBlock.BlockID as BlockIDD";
inline constexpr QStringView ByVariety = u" order by tblCrVariety.Variety, tblBlockPlant.BlockPID";
/// Plantings with their block, variety, type and group; the columns that two tables share have a name of their own.
QString plantingsWithVariety(QStringView fields, const QString &keyClause, const QString &activity);

/// Targets by name. `otherTable` ends in a comma or is empty.
QString targetsSql(QStringView otherTable, const QString &where);

} // namespace store
