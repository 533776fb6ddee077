// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/TableDef.h"

#include "platform/dao/DataError.h"

#include <algorithm>
#include <utility>

namespace dao
{

Field TableDef::CreateField(QString name, FieldType type, int size)
{
    Field field;
    field.name = std::move(name);
    field.type = type;
    field.size = size;
    return field;
}

void TableDef::Append(Field field)
{
    if (findField(field.name)) {
        throw DataError(DataErrorNumber::FieldExists,
                        QStringLiteral("The table %1 has a field %2 already.").arg(name_, field.name));
    }
    fields_.push_back(std::move(field));
}

void TableDef::Append(Index index)
{
    indexes_.push_back(std::move(index));
}

const Field *TableDef::findField(QStringView name) const
{
    const auto found = std::find_if(fields_.begin(), fields_.end(), [&](const Field &field) {
        return QStringView(field.name).compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == fields_.end() ? nullptr : &*found;
}

} // namespace dao
