// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/PickGrid.h"

#include "platform/basic/Numbers.h"
#include "platform/controls/FlexGrid.h"
#include "platform/controls/RedrawPause.h"
#include "platform/dao/Recordset.h"
#include "screens/GridActions.h"

#include <QAction>
#include <QKeyEvent>

namespace
{
constexpr int KeyColumn = 1;
constexpr int NameColumn = 2;
} // namespace

PickGrid::PickGrid(controls::FlexGrid &grid, std::span<const GridColumn> columns) : grid_(grid), columns_(columns)
{
    layOut(0);
    grid_.setStretchColumns({NameColumn});
    grid_.setNameColumn(NameColumn);
    grid_.setKeyClicks(controls::FlexGrid::KeyClick::SpaceAndF2);
    addGridAction(grid_, QStringLiteral("Select or deselect\tSpace"), {});
    QObject::connect(grid_.actions().constLast(), &QAction::triggered, &grid_,
                     [&grid] { Q_EMIT grid.Click(grid.Row(), grid.Col()); });
    QObject::connect(&grid_, &controls::FlexGrid::KeyDown, &grid_, [this](QKeyEvent *key) { search(*key); });
    grid_.setCellCopyText([this](int row, int col) {
        return col == markColumn() && isMarked(row) ? QStringLiteral("Yes") : grid_.TextMatrix(row, col);
    });
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

void PickGrid::search(QKeyEvent &key)
{
    constexpr int pause = 1000;
    const bool typed =
        !key.text().isEmpty() && key.text().at(0).isPrint() && !(key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    if (!typed) {
        return;
    }
    const bool goesOn = !searched_.isEmpty() && lastLetter_.isValid() && !lastLetter_.hasExpired(pause);
    const QString text = goesOn ? searched_ + key.text() : key.text();
    const int row = rowOf(text, grid_.Row() + (goesOn ? 0 : 1));
    // A space that is not part of a name selects the row.
    if (row > 0 && !text.startsWith(u' ')) {
        grid_.setCell(row, grid_.Col());
        grid_.showCell(row, grid_.Col());
    } else if (key.key() == Qt::Key_Space) {
        return;
    }
    searched_ = text;
    lastLetter_.start();
    key.accept();
}

int PickGrid::rowOf(const QString &text, int first) const
{
    const int rows = lastDataRow();
    const auto find = [&](const auto &matches) {
        for (int i = 0; i < rows; ++i) {
            const int row = (first - 1 + i) % rows + 1;
            if (matches(name(row))) {
                return row;
            }
        }
        return 0;
    };
    const int byName = find([&](const QString &name) { return name.startsWith(text, Qt::CaseInsensitive); });
    return byName > 0 ? byName : find([&](const QString &name) { return name.contains(u' ' + text, Qt::CaseInsensitive); });
}

void PickGrid::layOut(int count)
{
    layOutList(grid_, columns_, count);
    grid_.setColAlignment(markColumn(), controls::CellAlignment::Centre);
    for (int row = 1; row <= count; ++row) {
        setMarked(row, false);
    }
}

void PickGrid::fill(dao::Recordset rows, const QString &emptyText, const std::function<void(int row)> &filled)
{
    const controls::RedrawPause pause(grid_);
    layOut(rows.RecordCount());
    grid_.setEmptyText(rows.Eof() ? emptyText : QString());
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

QString PickGrid::counted(const QString &caption) const
{
    int count = 0;
    for (int row = 1; row <= lastDataRow(); ++row) {
        count += isMarked(row) ? 1 : 0;
    }
    return QStringLiteral("%1 (%2 Selected)").arg(caption).arg(count);
}

QString noBlocksText()
{
    return QStringLiteral("This farm has no active blocks. Add them in the main module.");
}

QString noPestsText(bool ofOneType)
{
    return ofOneType ? QStringLiteral("There are no pests of this type. Choose another type of pest.")
                     : QStringLiteral("There are no pests. Add them in the main module.");
}
