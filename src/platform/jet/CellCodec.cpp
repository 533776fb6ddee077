// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/CellCodec.h"

#include "platform/jet/ColumnSize.h"
#include "platform/jet/Error.h"
#include "platform/jet/TextCodec.h"

#include <QtEndian>

#include <bit>
#include <limits>

namespace jet
{

namespace
{

template <typename Number> QByteArray littleEndian(Number number)
{
    QByteArray bytes(sizeof number, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

template <typename Stored> QByteArray integer(const ColumnDefinition &column, const Value &value)
{
    const std::int32_t number = valueAs<std::int32_t>(column, value);
    if (number < std::numeric_limits<Stored>::min() || number > std::numeric_limits<Stored>::max()) {
        throw Error(ErrorNumber::TypeConversion,
                    QStringLiteral("%1 is beyond the range of the field %2.").arg(number).arg(column.name));
    }
    return littleEndian(static_cast<Stored>(number));
}

[[noreturn]] void failTooLong(const ColumnDefinition &column, qsizetype length, int limit)
{
    throw Error(ErrorNumber::FieldTooSmall,
                QStringLiteral("The field %1 holds %2 at most, not %3.").arg(column.name).arg(limit).arg(length));
}

} // namespace

void failOfType(const ColumnDefinition &column)
{
    throw Error(ErrorNumber::TypeConversion,
                QStringLiteral("A value of another type was given for the field %1.").arg(column.name));
}

QByteArray encodeCell(const ColumnDefinition &column, const Value &value)
{
    switch (column.type) {
    case ColumnType::Byte:
        return integer<std::uint8_t>(column, value);
    case ColumnType::Integer:
        return integer<std::int16_t>(column, value);
    case ColumnType::Long:
        return littleEndian(valueAs<std::int32_t>(column, value));
    case ColumnType::Currency:
        return littleEndian(valueAs<Currency>(column, value).units);
    case ColumnType::Single:
        return littleEndian(std::bit_cast<std::uint32_t>(valueAs<float>(column, value)));
    case ColumnType::Double:
        return littleEndian(std::bit_cast<std::uint64_t>(valueAs<double>(column, value)));
    case ColumnType::Date:
        return littleEndian(std::bit_cast<std::uint64_t>(valueAs<Date>(column, value).days));
    case ColumnType::Text: {
        const QString &text = valueAs<QString>(column, value);
        if (text.size() > column.characters()) {
            failTooLong(column, text.size(), column.characters());
        }
        return encodeText(text, column.isCompressed);
    }
    default:
        break;
    }
    const QByteArray &bytes = valueAs<QByteArray>(column, value);
    const auto size = static_cast<qsizetype>(fixedBytes(column));
    if (bytes.size() > size || (column.isFixed && bytes.size() != size)) {
        failTooLong(column, bytes.size(), static_cast<int>(size));
    }
    return bytes;
}

} // namespace jet
