// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/GridColumns.h"

#include <QElapsedTimer>
#include <QString>

#include <array>
#include <cstdint>
#include <functional>

class QKeyEvent;
namespace controls
{
class FlexGrid;
}
namespace dao
{
class Recordset;
}

/// A grid in which rows are selected by the colour of the last column: white or yellow. Row 0 is the header, the last row is
/// empty. Column 1 is the key, column 2 the name, which takes the spare width. Space and F2 click the current cell;
/// typed letters go to the next name that begins with them.
class PickGrid
{
public:
    /// The columns must live as long as the grid.
    PickGrid(controls::FlexGrid &grid, std::span<const GridColumn> columns);

    /// Fills the grid with the rows of a query, none of them selected; without rows it shows `emptyText`. `filled` is called for
    /// each row after its texts are set.
    void fill(dao::Recordset rows, const QString &emptyText, const std::function<void(int row)> &filled = {});
    bool isDataRow(int row) const;
    /// Data rows are 1 to this one.
    int lastDataRow() const;
    std::int32_t key(int row) const;
    QString name(int row) const;
    int markColumn() const { return static_cast<int>(columns_.size()) - 1; }

    bool isMarked(int row) const;
    void setMarked(int row, bool marked);
    /// Marks every row with yellow and "+", or unmarks it; only the display changes.
    void markAll(bool marked);
    int Count_Selected() const;
    /// A caption with the number of selected data rows: "Pests (3 Selected)".
    QString counted(const QString &caption) const;

private:
    /// Clears the grid and lays out header, widths, `count` white data rows and the empty row.
    void layOut(int count);
    void search(QKeyEvent &key);
    /// The row from `first` on, at the end from the top, whose name or one of its words begins with the text; 0 for none.
    int rowOf(const QString &text, int first) const;

    controls::FlexGrid &grid_;
    std::span<const GridColumn> columns_;
    QString searched_;
    QElapsedTimer lastLetter_;
};

/// Why a list of blocks or pests is empty, and what to do.
QString noBlocksText();
QString noPestsText(bool ofOneType);

/// The columns of a list of pests.
inline constexpr std::array<GridColumn, 4> PestPickColumns{
    {{"", 0}, {"CTargetID", 0, "CCTargetID"}, {"Target", 2500, "Target"}, {"Select", 600}}};
