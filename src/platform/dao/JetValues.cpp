// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/JetValues.h"

#include <algorithm>
#include <cmath>

namespace dao
{

namespace
{

bool isPrimaryAlone(const jet::TableDefinition &table, std::size_t column)
{
    return std::any_of(table.indexes.begin(), table.indexes.end(), [column](const jet::IndexDefinition &index) {
        return index.isPrimary && index.columns.size() == 1 && index.columns.front().column == column;
    });
}

} // namespace

std::optional<FieldType> fieldTypeOf(jet::ColumnType type)
{
    switch (type) {
    case jet::ColumnType::Boolean:
        return FieldType::Boolean;
    case jet::ColumnType::Byte:
    case jet::ColumnType::Integer:
        return FieldType::Integer;
    case jet::ColumnType::Long:
        return FieldType::Long;
    case jet::ColumnType::Single:
        return FieldType::Single;
    case jet::ColumnType::Currency:
    case jet::ColumnType::Double:
        return FieldType::Double;
    case jet::ColumnType::Date:
        return FieldType::Date;
    case jet::ColumnType::Text:
        return FieldType::Text;
    default:
        return std::nullopt;
    }
}

TableDef definitionOf(const jet::TableDefinition &source)
{
    TableDef target(source.name);
    for (std::size_t i = 0; i < source.columns.size(); ++i) {
        const jet::ColumnDefinition &column = source.columns[i];
        if (const auto type = fieldTypeOf(column.type)) {
            Field field = TableDef::CreateField(column.name, *type, column.characters());
            field.allowZeroLength = column.allowsZeroLength.value_or(true);
            field.autoIncrement = column.isAutoNumber && *type == FieldType::Long && isPrimaryAlone(source, i);
            target.Append(std::move(field));
        }
    }
    for (const jet::IndexDefinition &index : source.indexes) {
        Index copy{index.name, {}, index.isPrimary, index.isUnique};
        for (const jet::IndexColumn &column : index.columns) {
            copy.fields.push_back(source.columns[column.column].name);
        }
        const bool isMirrored = std::all_of(copy.fields.begin(), copy.fields.end(),
                                            [&target](const QString &name) { return target.findField(name) != nullptr; });
        if (isMirrored && !copy.fields.empty()) {
            target.Append(std::move(copy));
        }
    }
    return target;
}

Value valueOf(const jet::Value &value)
{
    struct Convert {
        Value operator()(jet::Null) const { return Null{}; }
        Value operator()(bool flag) const { return flag; }
        Value operator()(std::int32_t number) const { return number; }
        Value operator()(float number) const { return static_cast<double>(number); }
        Value operator()(double number) const { return number; }
        Value operator()(jet::Currency amount) const { return static_cast<double>(amount.units) / 10000.0; }
        Value operator()(jet::Date date) const { return basic::SerialDate(date.days); }
        Value operator()(const QString &text) const { return text; }
        Value operator()(const QByteArray &) const { return Null{}; }
    };
    return std::visit(Convert{}, value);
}

jet::Value jetValueOf(const Value &value, jet::ColumnType type)
{
    struct Convert {
        jet::ColumnType type;
        jet::Value operator()(Null) const { return jet::Null{}; }
        jet::Value operator()(bool flag) const { return flag; }
        jet::Value operator()(std::int32_t number) const { return number; }
        jet::Value operator()(double number) const
        {
            switch (type) {
            case jet::ColumnType::Single:
                return static_cast<float>(number);
            case jet::ColumnType::Currency:
                return jet::Currency{std::llround(number * 10000.0)};
            default:
                return number;
            }
        }
        jet::Value operator()(basic::SerialDate date) const { return jet::Date{date.days()}; }
        jet::Value operator()(const QString &text) const { return text; }
    };
    return std::visit(Convert{type}, value);
}

} // namespace dao
