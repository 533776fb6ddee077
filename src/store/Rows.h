// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Database.h"

#include <QStringView>

#include <span>

/// What every writer of the data class does with rows: add, add when missing, edit, add or edit, delete the first.
namespace store
{

struct FieldValue {
    QStringView name;
    dao::Value value;
};

using FieldValues = std::span<const FieldValue>;

/// A table and its autonumber; an empty key for tables without one.
struct KeyedTable {
    QStringView name;
    QStringView key;
};

/// What to do with the row that a query finds, or fails to find.
enum class Existing { LeaveAlone, Edit };
enum class Missing { LeaveAlone, Add };

/// Writes `fields` to the first row of `sql`, or to a new row, by the two rules. Returns the value of `keyField` in
/// the row written, 0 when none was written or the field is empty.
std::int32_t writeRow(dao::Database &database, const QString &sql, Existing existing, Missing missing, FieldValues fields,
                      QStringView keyField = {});

/// Adds a row through a query that is meant to find nothing; should it find a row, nothing is written.
std::int32_t addRow(dao::Database &database, KeyedTable table, FieldValues fields);

/// Adds a row whatever the table holds.
std::int32_t appendRow(dao::Database &database, KeyedTable table, FieldValues fields);

/// The query for the row that has the key.
QString rowByKey(KeyedTable table, std::int32_t key);

/// Deletes the one row with the lowest key among those that meet `condition` (all rows when it is empty), whatever their number.
void deleteFirst(dao::Database &database, KeyedTable table, const QString &condition);

} // namespace store
