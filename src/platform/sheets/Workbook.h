// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

/// Workbooks as people fill them in: cells with their kinds and texts, no formats. `.xlsx` and `.csv` are read.
namespace sheets
{

enum class CellKind { Blank, Text, Number, YesNo, Date, Error };

struct Cell {
    CellKind kind = CellKind::Blank;
    /// The value comes from a formula; `text` is what the formula gave when the workbook was saved.
    bool formula = false;
    /// A number in its shortest form with a point, a date as yyyy/mm/dd (with the time behind it when there is one), "Yes" or
    /// "No", an error such as "#N/A".
    QString text;

    bool isBlank() const { return kind == CellKind::Blank; }
};

/// Rows and columns from 0, both ends included.
struct MergedCells {
    int firstRow = 0;
    int firstColumn = 0;
    int lastRow = 0;
    int lastColumn = 0;
};

struct Sheet {
    QString name;
    /// By row from 0; a row ends with its last filled cell.
    std::vector<std::vector<Cell>> rows;
    std::vector<MergedCells> merged;

    /// Blank beyond what is filled.
    const Cell &at(int row, int column) const;
};

struct Workbook {
    std::vector<Sheet> sheets;
};

/// Limits of one sheet; more is refused.
inline constexpr int MaxRows = 50'000;
inline constexpr int MaxColumns = 256;

/// Reads a file by its content, whatever its name ends in. The one sheet of a `.csv` has the name of the file without ending.
/// Error 53 without the file; 75, with a sentence that names the file, when it is damaged, protected by a password, too large,
/// of another format, or holds macros.
Workbook readWorkbook(const QString &path);

/// "A" for 0, "AA" for 26.
QString columnLetters(int column);

} // namespace sheets
