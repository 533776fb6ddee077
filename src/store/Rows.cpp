// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Rows.h"

#include "store/SqlText.h"

namespace store
{

std::int32_t writeRow(dao::Database &database, const QString &sql, Existing existing, Missing missing, FieldValues fields,
                      QStringView keyField)
{
    dao::Recordset rows = database.OpenRecordset(sql, dao::RecordsetType::Dynaset);
    if (rows.Eof()) {
        if (missing == Missing::LeaveAlone) {
            return 0;
        }
        rows.AddNew();
    } else {
        if (existing == Existing::LeaveAlone) {
            return 0;
        }
        rows.Edit();
    }
    for (const FieldValue &field : fields) {
        rows.set(field.name, field.value);
    }
    // A new row's key is known before the row is written, and no longer at hand afterwards.
    const std::int32_t key = keyField.isEmpty() ? 0 : rows.longValue(keyField);
    rows.Update();
    return key;
}

std::int32_t addRow(dao::Database &database, KeyedTable table, FieldValues fields)
{
    return writeRow(database, rowByKey(table, 0), Existing::LeaveAlone, Missing::Add, fields, table.key);
}

std::int32_t appendRow(dao::Database &database, KeyedTable table, FieldValues fields)
{
    const QString none = sqlText(u"Select * from ", table.name, u" where 1 = 0");
    return writeRow(database, none, Existing::LeaveAlone, Missing::Add, fields, table.key);
}

QString rowByKey(KeyedTable table, std::int32_t key)
{
    return sqlText(u"Select * from ", table.name, u" where ", table.key, u" =", key);
}

void deleteFirst(dao::Database &database, KeyedTable table, const QString &condition)
{
    const QString where = condition.isEmpty() ? QString() : sqlText(u" where ", condition);
    // An instruction may have thousands of rows: the lowest key is asked for, not the whole set.
    const QString sql = table.key.isEmpty() ? sqlText(u"Select * from ", table.name, where)
                                            : sqlText(u"Select * from ", table.name, u" where ", table.key, u" in (Select Min(",
                                                      table.key, u") from ", table.name, where, u")");
    dao::Recordset rows = database.OpenRecordset(sql, dao::RecordsetType::Dynaset);
    if (!rows.Eof()) {
        rows.Delete();
    }
}

} // namespace store
