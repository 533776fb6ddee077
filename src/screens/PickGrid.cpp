// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/PickGrid.h"

#include "platform/basic/Numbers.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/RedrawPause.h"
#include "platform/dao/Recordset.h"

namespace
{
constexpr int KeyColumn = 1;
constexpr int NameColumn = 2;
} // namespace

PickGrid::PickGrid(controls::FlexGrid &grid, std::span<const GridColumn> columns) : grid_(grid), columns_(columns)
{
    layOut(0);
    grid_.setStretchColumns({NameColumn});
    grid_.setKeyClicks(controls::FlexGrid::KeyClick::SpaceAndF2);
    grid_.setCellDescriber([&grid, mark = markColumn()](int row, int col) {
        const QString name = grid.TextMatrix(row, NameColumn);
        if (name.isEmpty()) {
            return QString();
        }
        if (col == mark) {
            const bool marked = grid.CellBackColor(row, col) == controls::cellColour::Yellow;
            return QStringLiteral("%1, %2").arg(name, marked ? QStringLiteral("selected") : QStringLiteral("not selected"));
        }
        return QStringLiteral("%1, %2, %3").arg(name, grid.TextMatrix(0, col), grid.TextMatrix(row, col));
    });
}

void PickGrid::layOut(int count)
{
    layOutList(grid_, columns_, count);
    for (int row = 1; row <= count; ++row) {
        setMarked(row, false);
    }
}

void PickGrid::fill(dao::Recordset rows, const std::function<void(int row)> &filled)
{
    const controls::RedrawPause pause(grid_);
    layOut(rows.RecordCount());
    for (int row = 1; !rows.Eof(); rows.MoveNext(), ++row) {
        for (std::size_t col = 0; col < columns_.size(); ++col) {
            if (columns_[col].field) {
                grid_.setTextMatrix(row, static_cast<int>(col), rows.text(columns_[col].field));
            }
        }
        if (filled) {
            filled(row);
        }
    }
}

int PickGrid::lastDataRow() const
{
    return grid_.Rows() - 2;
}

bool PickGrid::isDataRow(int row) const
{
    return row >= 1 && row <= lastDataRow();
}

std::int32_t PickGrid::key(int row) const
{
    return basic::toLong32(basic::Val(grid_.TextMatrix(row, KeyColumn)));
}

QString PickGrid::name(int row) const
{
    return grid_.TextMatrix(row, NameColumn);
}

bool PickGrid::isMarked(int row) const
{
    return grid_.CellBackColor(row, markColumn()) == controls::cellColour::Yellow;
}

void PickGrid::setMarked(int row, bool marked)
{
    grid_.setCellBackColor(row, markColumn(), marked ? controls::cellColour::Yellow : controls::cellColour::White);
}

void PickGrid::markAll(bool marked)
{
    for (int row = 1; row <= lastDataRow(); ++row) {
        setMarked(row, marked);
        grid_.setTextMatrix(row, markColumn(), marked ? QStringLiteral("+") : QString());
    }
}

int PickGrid::Count_Selected() const
{
    int count = 0;
    for (int row = 1; row < grid_.Rows(); ++row) {
        count += isMarked(row) ? 1 : 0;
    }
    return count;
}
