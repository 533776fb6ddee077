// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/Range.h"

#include <QStringView>

namespace excel
{

/// "A9", "$a$9": row and column from 0 in the top left corner of the area. ExcelError for anything else.
Area parseCell(QStringView text);
/// "A1:C3" or "A1".
Area parseArea(QStringView text);
/// "A:O", "$a:$a" or "C": columns from 0; rows 0.
Area parseColumns(QStringView text);
/// "$1:$7" or "3": rows from 0; columns 0.
Area parseRows(QStringView text);

} // namespace excel
