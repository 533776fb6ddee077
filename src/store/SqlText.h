// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/Formats.h"
#include "platform/basic/SerialDate.h"

#include <QString>

#include <concepts>

namespace store
{

// One overload per kind of fragment. The Boolean's is a template, since a text literal converts to a plain bool more readily
// than to a text.
inline void appendSql(QString &sql, QStringView text)
{
    sql.append(text);
}
inline void appendSql(QString &sql, std::integral auto number) requires(!std::same_as<decltype(number), bool>)
{
    sql.append(QString::number(number));
}
inline void appendSql(QString &sql, std::same_as<bool> auto value)
{
    sql.append(basic::booleanText(value));
}
inline void appendSql(QString &sql, basic::SerialDate date)
{
    sql.append(u'#').append(basic::formatDate(date, u"mm/dd/yyyy")).append(u'#');
}

/// Joins fragments to one statement: text as it is, numbers in decimals, Booleans as True and False, dates as #mm/dd/yyyy#
/// (the time of day drops out). Texts are not escaped.
template <typename... Parts> QString sqlText(const Parts &...parts)
{
    QString sql;
    sql.reserve(160);
    (appendSql(sql, parts), ...);
    return sql;
}

} // namespace store
