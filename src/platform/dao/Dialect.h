// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/ClauseReader.h"

#include <optional>
#include <utility>
#include <vector>

namespace dao
{

/// A column of a result: where it comes from, if it is a plain field.
struct ResultColumn {
    QString name;
    /// Name of the table in the query, empty for an expression.
    QString table;
    /// Position in the table's fields, -1 for an expression.
    int field = -1;
    /// Nothing for an expression whose type shows only in its values.
    std::optional<FieldType> type;
};

/// A statement in SQLite's SQL. Literal n of the token list is its parameter n + 1.
struct Translation {
    QByteArray sql;
    std::vector<ResultColumn> columns;
    /// Set for a query whose rows are rows of one table: SQLite's row number then follows the last column.
    std::shared_ptr<TableInfo> table;
    /// Literals that are written to a field as they are, which have to pass that field's checks.
    std::vector<std::pair<int, Field>> assignments;
};

/// Translates a SELECT. Every name is looked up here, so that 3061 and 3078 are raised here and what reaches SQLite is quoted.
/// Rows that ORDER BY leaves equal come in the order of their keys.
Translation translateSelect(const TokenList &list, const TableLookup &lookup);
/// Translates an UPDATE, INSERT or DELETE.
Translation translateAction(const TokenList &list, const TableLookup &lookup);

} // namespace dao
