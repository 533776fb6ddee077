// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/IndexKey.h"

#include "platform/jet/Fault.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>

namespace jet
{

namespace
{

constexpr char NotNull = '\x7F';
constexpr char IsNull = '\0';
constexpr char True = '\0';
constexpr char False = '\xFF';
constexpr std::uint32_t GeneralSortOrder = 0x0409;

template <typename Number> void appendBigEndian(KeyBytes &key, Number number)
{
    std::array<char, sizeof(Number)> bytes;
    qToBigEndian(number, bytes.data());
    key.append(bytes.data(), bytes.size());
}

/// Positive numbers above negative ones.
template <typename Number> Number orderedInteger(Number number)
{
    return static_cast<Number>(number ^ (Number{1} << (8 * sizeof(Number) - 1)));
}

/// Of negative numbers the greater bits are the smaller number.
template <typename Bits> Bits orderedFloat(Bits bits)
{
    constexpr Bits Sign = Bits{1} << (8 * sizeof(Bits) - 1);
    return (bits & Sign) != 0 ? static_cast<Bits>(~bits) : bits | Sign;
}

/// The general sort order for what names of tables are made of; letters without regard to case.
void appendText(KeyBytes &key, const QString &text)
{
    constexpr std::array<char, 26> Letters{0x4A, 0x4C, 0x4D, 0x4F, 0x51, 0x53, 0x55, 0x57, 0x59, 0x5B, 0x5C, 0x5E, 0x60,
                                           0x62, 0x64, 0x66, 0x68, 0x69, 0x6B, 0x6D, 0x6F, 0x71, 0x73, 0x75, 0x76, 0x78};
    constexpr char FirstDigit = 0x36;
    constexpr char TextEnd = 0x01;
    for (const QChar character : text) {
        const char16_t code = character.toLower().unicode();
        if (code >= u'a' && code <= u'z') {
            key.push_back(Letters[code - u'a']);
        } else if (code >= u'0' && code <= u'9') {
            key.push_back(static_cast<char>(FirstDigit + 2 * (code - u'0')));
        } else if (code == u' ') {
            key.push_back(0x07);
        } else if (code == u'_') {
            key.append("\x2B\x03");
        } else {
            throw Fault(QStringLiteral("the name %1 holds other characters than letters A to Z, digits, blanks and underscores")
                            .arg(text));
        }
    }
    key.push_back(TextEnd);
    key.push_back('\0');
}

/// Appends the value's own bytes.
struct ValueBytes {
    KeyBytes &key;
    ColumnType type;

    void operator()(Null) const {}
    void operator()(bool flag) const { key.push_back(flag ? True : False); }
    void operator()(std::int32_t number) const
    {
        if (type == ColumnType::Byte) {
            appendBigEndian(key, static_cast<std::uint8_t>(number));
        } else if (type == ColumnType::Integer) {
            appendBigEndian(key, orderedInteger(static_cast<std::uint16_t>(number)));
        } else {
            appendBigEndian(key, orderedInteger(static_cast<std::uint32_t>(number)));
        }
    }
    void operator()(float number) const { appendBigEndian(key, orderedFloat(std::bit_cast<std::uint32_t>(number))); }
    void operator()(double number) const { appendBigEndian(key, orderedFloat(std::bit_cast<std::uint64_t>(number))); }
    void operator()(Currency money) const { appendBigEndian(key, orderedInteger(static_cast<std::uint64_t>(money.units))); }
    void operator()(Date date) const { (*this)(date.days); }
    void operator()(const QString &text) const { appendText(key, text); }
    void operator()(const QByteArray &) const { throw Fault(QStringLiteral("an index is on a column of binary values")); }
};

} // namespace

QString unsupportedIndex(const TableDefinition &table, const IndexDefinition &index, bool isCatalogue)
{
    for (const IndexColumn &part : index.columns) {
        const ColumnDefinition &column = table.columns[part.column];
        switch (column.type) {
        case ColumnType::Boolean:
        case ColumnType::Byte:
        case ColumnType::Integer:
        case ColumnType::Long:
        case ColumnType::Currency:
        case ColumnType::Single:
        case ColumnType::Double:
        case ColumnType::Date:
            break;
        case ColumnType::Text:
            if (isCatalogue && column.sortOrder == GeneralSortOrder) {
                break;
            }
            return QStringLiteral("the index %1 is on the Text column %2").arg(index.name, column.name);
        default:
            return QStringLiteral("the index %1 is on the column %2, whose type has no known order").arg(index.name, column.name);
        }
    }
    return {};
}

bool hasKnownOrder(const QString &name)
{
    try {
        KeyBytes key;
        appendText(key, name);
        return true;
    } catch (const Fault &) {
        return false;
    }
}

std::size_t nullsInKey(const IndexDefinition &index, const std::vector<Value> &values)
{
    return static_cast<std::size_t>(std::count_if(index.columns.begin(), index.columns.end(), [&](const IndexColumn &part) {
        return std::holds_alternative<Null>(values[part.column]);
    }));
}

std::optional<KeyBytes> indexKey(const TableDefinition &table, const IndexDefinition &index, const std::vector<Value> &values)
{
    if (index.ignoresNulls && nullsInKey(index, values) == index.columns.size()) {
        return std::nullopt;
    }
    KeyBytes key;
    for (const IndexColumn &part : index.columns) {
        const Value &value = values[part.column];
        const std::size_t begin = key.size();
        key.push_back(std::holds_alternative<Null>(value) ? IsNull : NotNull);
        std::visit(ValueBytes{key, table.columns[part.column].type}, value);
        if (!part.isAscending) {
            std::transform(key.begin() + static_cast<std::ptrdiff_t>(begin), key.end(),
                           key.begin() + static_cast<std::ptrdiff_t>(begin), [](char byte) { return static_cast<char>(~byte); });
        }
    }
    return key;
}

} // namespace jet
