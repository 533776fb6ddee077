// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <variant>

namespace jet
{

struct Null {
    bool operator==(const Null &) const = default;
};

/// Ten thousandths of a unit.
struct Currency {
    std::int64_t units = 0;
    bool operator==(const Currency &) const = default;
};

/// Days since 1899-12-30; before it the whole days are negative while the time of day still counts upwards.
struct Date {
    double days = 0.0;
    bool operator==(const Date &) const = default;
};

/// What a column holds, bit for bit as the file has it: Byte, Integer and Long come as int32, Single as float, Text and Memo as
/// QString. As QByteArray come Binary and OLE, a GUID as its 16 bytes, a Numeric as its 17 (a sign byte, then the scaled number
/// in four words of four bytes, the highest word first and each little-endian), and any type that is not known.
using Value = std::variant<Null, bool, std::int32_t, float, double, Currency, Date, QString, QByteArray>;

/// Where a row is for as long as it exists: the page and the slot on it (from 0) that indexes point at. A row that has grown
/// beyond its page keeps its position.
struct RowPosition {
    std::uint32_t page = 0;
    std::uint8_t slot = 0;
    auto operator<=>(const RowPosition &) const = default;
};

} // namespace jet
