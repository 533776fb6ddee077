// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/TableDefinition.h"

#include <QByteArray>

namespace jet
{

/// The bytes of a value in its row. Not for Boolean, Memo and OLE, which are elsewhere, nor for null. Error 3421 for a value of
/// another type or beyond the range of the column, 3163 for one that is too long.
QByteArray encodeCell(const ColumnDefinition &column, const Value &value);

[[noreturn]] void failOfType(const ColumnDefinition &column);
/// The value as the type that its column asks for; error 3421 for any other.
template <typename Type> const Type &valueAs(const ColumnDefinition &column, const Value &value)
{
    const Type *found = std::get_if<Type>(&value);
    if (!found) {
        failOfType(column);
    }
    return *found;
}

} // namespace jet
