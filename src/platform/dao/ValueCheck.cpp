// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/ValueCheck.h"

namespace dao
{

namespace
{

/// SQL that is true for a value that the field cannot hold.
QByteArray mismatch(const Field &field, const QByteArray &name)
{
    const QByteArray type = "typeof(" + name + ")";
    const auto isNumber = [&](const char *low, const char *high) {
        return "(" + type + " <> 'null' AND (" + type + " <> 'integer' OR " + name + " NOT BETWEEN " + low + " AND " + high
            + "))";
    };
    switch (field.type) {
    case FieldType::Boolean:
        return "(" + type + " NOT IN ('null', 'integer'))";
    case FieldType::Integer:
        return isNumber("-32768", "32767");
    case FieldType::Long:
        return isNumber("-2147483648", "2147483647");
    case FieldType::Single:
    case FieldType::Double:
        return "(" + type + " NOT IN ('null', 'integer', 'real'))";
    case FieldType::Date:
        // Beyond the years 100 to 9999 there are no dates.
        return "(" + type + " <> 'null' AND (" + type + " NOT IN ('integer', 'real') OR " + name
            + " NOT BETWEEN -657434 AND 2958466))";
    case FieldType::Text:
        return "(" + type + " NOT IN ('null', 'text') OR length(" + name + ") > " + QByteArray::number(field.size) + ")";
    }
    return "0";
}

} // namespace

QStringList mismatchesOf(const Connection &connection, const TableInfo &table)
{
    QStringList found;
    for (std::size_t i = 0; i < table.fields.size(); ++i) {
        const QByteArray &name = table.quotedFields[i];
        const QByteArray where = " FROM " + table.quotedName + " WHERE " + mismatch(table.fields[i], name);
        Statement rows(connection,
                       "SELECT rowid, typeof(" + name + "), substr(CAST(" + name + " AS TEXT), 1, 40)" + where + " LIMIT "
                           + QByteArray::number(MaxListed));
        int listed = 0;
        for (; rows.step(); ++listed) {
            const auto text = [&rows](int column) {
                const std::string_view bytes = rows.textAt(column);
                return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
            };
            found.append(QStringLiteral("%1, row %2: the field %3 cannot hold the %4 %5")
                             .arg(table.name)
                             .arg(rows.integerAt(0))
                             .arg(table.fields[i].name, text(1), text(2)));
        }
        if (listed == MaxListed) {
            Statement count(connection, "SELECT count(*)" + where);
            count.step();
            found.append(QStringLiteral("%1: %2 values of the field %3 in all")
                             .arg(table.name)
                             .arg(count.integerAt(0))
                             .arg(table.fields[i].name));
        }
    }
    return found;
}

} // namespace dao
