// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

/// Where things stand in the capture grid, and the arithmetic of its cells. No widget needed.
namespace capture
{

inline constexpr int PestNameRow = 0;
inline constexpr int HeadingRow = 1;
inline constexpr int TotalRow = 2;
inline constexpr int FirstPointRow = 3;
inline constexpr int PointColumn = 2;
inline constexpr int FirstPestColumn = 3;
inline constexpr int FirstValueColumn = 4;
/// A pest's columns: its hidden record key, then three values, of which the last two are hidden.
inline constexpr int ColumnsPerPest = 4;
inline constexpr int ValuesPerPest = 3;

/// Pests count from 1.
constexpr int columnsFor(int pests)
{
    return ColumnsPerPest * pests + FirstPestColumn;
}
constexpr int keyColumn(int pest)
{
    return ColumnsPerPest * (pest - 1) + FirstPestColumn;
}
/// `value` counts from 1 to 3: the count or answer itself, "In", "Out".
constexpr int valueColumn(int pest, int value)
{
    return keyColumn(pest) + value;
}

struct PestColumn {
    int pest;
    int value;
    bool operator==(const PestColumn &) const = default;
};
/// Which pest and value a column holds; nothing for the fixed and the key columns and beyond the last pest.
std::optional<PestColumn> pestColumn(int column, int pests);

/// A cell as it is to be shown: its text, its mark, and the 16-bit value that its text says.
struct CellPicture {
    QString text;
    int mark;
    std::int16_t value;
};

/// A count as read from the file: "0" on white, else the number on yellow (a point) or green (a total).
CellPicture storedPoint(std::int16_t count);
CellPicture storedTotal(std::int16_t total);
/// A total after a change: empty on white for 0, else green.
CellPicture changedTotal(std::int16_t total);
/// What was typed over a point or a total. Only the number that the text begins with counts, rounded to a whole one. Error 6
/// beyond 16 bits.
CellPicture typedPoint(const QString &typed);
CellPicture typedTotal(const QString &typed);

/// The running total after a cell went from `oldValue` to `newValue`: kept by difference, never counted again. Error 6 beyond 16
/// bits.
std::int16_t runningTotal(std::int16_t total, std::int16_t oldValue, std::int16_t newValue);

} // namespace capture
