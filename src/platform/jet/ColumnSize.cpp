// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/ColumnSize.h"

namespace jet
{

std::size_t fixedBytes(const ColumnDefinition &column)
{
    switch (column.type) {
    case ColumnType::Boolean:
        return 0;
    case ColumnType::Byte:
        return 1;
    case ColumnType::Integer:
        return 2;
    case ColumnType::Long:
    case ColumnType::Single:
        return 4;
    case ColumnType::Currency:
    case ColumnType::Double:
    case ColumnType::Date:
        return 8;
    case ColumnType::Guid:
        return 16;
    case ColumnType::Numeric:
        return 17;
    default:
        return column.length;
    }
}

} // namespace jet
