// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Conversion.h"

#include "platform/basic/Numbers.h"
#include "platform/dao/DataError.h"

#include <cmath>
#include <optional>

namespace dao
{

namespace
{

[[noreturn]] void failKind(const Field &field)
{
    throw DataError(DataErrorNumber::TypeConversion,
                    QStringLiteral("The field %1 cannot take a value of this kind.").arg(field.name));
}

[[noreturn]] void failRange(const Field &field)
{
    throw basic::RunTimeError(basic::ErrorNumber::Overflow,
                              QStringLiteral("Overflow: the number is too large for the field %1.").arg(field.name));
}

double numberIn(const Field &field, const Value &value)
{
    if (const auto *flag = std::get_if<bool>(&value)) {
        return *flag ? -1.0 : 0.0;
    }
    if (const auto *whole = std::get_if<std::int32_t>(&value)) {
        return *whole;
    }
    if (const auto *number = std::get_if<double>(&value)) {
        return *number;
    }
    failKind(field);
}

Value wholeFor(const Field &field, double number)
{
    const double whole = basic::roundHalfEven(number);
    const double limit = field.type == FieldType::Integer ? 32768.0 : 2147483648.0;
    if (!(whole >= -limit && whole < limit)) {
        failRange(field);
    }
    return static_cast<std::int32_t>(whole);
}

Value realFor(const Field &field, double number)
{
    const double stored = field.type == FieldType::Single ? static_cast<double>(static_cast<float>(number)) : number;
    if (!std::isfinite(stored)) {
        failRange(field);
    }
    return stored == 0.0 ? 0.0 : stored;
}

Value dateFor(const Field &field, const Value &value)
{
    const auto *date = std::get_if<basic::SerialDate>(&value);
    if (date == nullptr) {
        failKind(field);
    }
    if (!std::isfinite(date->days())) {
        failRange(field);
    }
    return *date;
}

Value textFor(const Field &field, const Value &value)
{
    const auto *text = std::get_if<QString>(&value);
    if (text == nullptr) {
        failKind(field);
    }
    if (text->isEmpty() && !field.allowZeroLength) {
        throw DataError(DataErrorNumber::ZeroLengthNotAllowed,
                        QStringLiteral("The field %1 cannot hold an empty text.").arg(field.name));
    }
    if (field.size > 0 && text->size() > field.size) {
        throw DataError(
            DataErrorNumber::FieldTooSmall,
            QStringLiteral("The text is too long: the field %1 takes %2 characters.").arg(field.name).arg(field.size));
    }
    return *text;
}

} // namespace

Value convertedFor(const Field &field, const Value &value)
{
    const bool isNull = std::holds_alternative<Null>(value);
    if (isNull && field.type != FieldType::Boolean) {
        return Null{};
    }
    switch (field.type) {
    case FieldType::Boolean:
        return !isNull && numberIn(field, value) != 0.0;
    case FieldType::Integer:
    case FieldType::Long:
        return wholeFor(field, numberIn(field, value));
    case FieldType::Single:
    case FieldType::Double:
        return realFor(field, numberIn(field, value));
    case FieldType::Date:
        return dateFor(field, value);
    case FieldType::Text:
        return textFor(field, value);
    }
    failKind(field);
}

} // namespace dao
