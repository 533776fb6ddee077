// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

/// Rows and columns of the capture grid, and the arithmetic of its cells, without a widget.
namespace pestmon::capture
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
/// The pest and value of a column; nothing for the fixed and the key columns and beyond the last pest.
std::optional<PestColumn> pestColumn(int column, int pests);

/// A cell that a user can edit, where the current one moves to.
struct CellPosition {
    int row;
    int col;
    bool operator==(const CellPosition &) const = default;
};
enum class Direction { Next, Previous };
/// The next or previous pest of the row, at the end of a row the next or previous point, up to `lastPointRow`. Nothing beyond the
/// last or first cell; a point never leads back to the totals.
std::optional<CellPosition> neighbourCell(CellPosition cell, int pests, int lastPointRow, Direction direction);

/// How a cell displays its 16-bit value: the text and the colour.
struct CellDisplay {
    QString text;
    int colour;
    std::int16_t value;
    bool operator==(const CellDisplay &) const = default;
};

/// A Yes/No answer: no text, red for Yes.
CellDisplay answer(bool yes);
/// A stored count: "0" on white, else the number on yellow (a point) or green (a total).
CellDisplay storedPoint(std::int16_t count);
CellDisplay storedTotal(std::int16_t total);
/// A total after a change: empty on white for 0, else green.
CellDisplay changedTotal(std::int16_t total);
/// A text typed over a point or a total. Only its leading number counts, rounded to a whole number. Error 6 beyond 16 bits.
CellDisplay typedPoint(const QString &typed);
CellDisplay typedTotal(const QString &typed);

/// The total after a cell changed from `oldValue` to `newValue`: a running sum, never a recount. Error 6 beyond 16 bits.
std::int16_t runningTotal(std::int16_t total, std::int16_t oldValue, std::int16_t newValue);

} // namespace pestmon::capture
