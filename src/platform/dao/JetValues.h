// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/TableDef.h"
#include "platform/jet/TableDefinition.h"
#include "platform/jet/Value.h"

#include <optional>

namespace dao
{

/// The type that holds every value of a Jet column; nothing for Memo, OLE, binary and numeric columns. A Currency is a Double.
std::optional<FieldType> fieldTypeOf(jet::ColumnType type);

/// The value as this layer has it, bit for bit but for Currency; null for bytes.
Value valueOf(const jet::Value &value);
/// The value as a Jet column of that type stores it.
jet::Value jetValueOf(const Value &value, jet::ColumnType type);

/// The definition as the mirror of a table has it, without the columns that have no type here.
TableDef definitionOf(const jet::TableDefinition &source);

} // namespace dao
