// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Schema.h"

#include <QStringList>

#include <array>
#include <optional>
#include <vector>

/// The farm lists: what an office keeps of its farms, blocks, crops, workers, pests and seasons. One description each drives
/// screens, checks, workbooks and writes.
namespace lists
{

/// A list comes after those that its rows refer to.
enum class List { Farms, Blocks, CropGroups, CropTypes, Varieties, Plantings, Workers, Pests, Seasons };
inline constexpr std::array AllLists{List::Farms,     List::Blocks,  List::CropGroups, List::CropTypes, List::Varieties,
                                     List::Plantings, List::Workers, List::Pests,      List::Seasons};
constexpr std::size_t indexOf(List list)
{
    return static_cast<std::size_t>(list);
}

/// What a cell holds. The stored form of each is a text, the empty one meaning none.
enum class ColumnKind {
    Text,
    /// Monitoring points: a whole number.
    Points,
    /// "1" or "0".
    YesNo,
    /// "P", "D", "W", "O".
    PestKind,
    /// The key of a row of another list.
    Reference,
    /// Keys of rows of another list, ascending, joined by semicolons.
    References,
    /// A name that follows from the row referred to in another column; nothing is stored.
    Parent,
};

struct Column {
    QString heading;
    ColumnKind kind = ColumnKind::Text;
    /// Of the list's own table; empty where the values are elsewhere.
    QString field;
    /// The list referred to.
    std::optional<List> target;
    /// Parent: the column whose row leads to it.
    int from = -1;
    bool required = false;
    /// Most characters where other tables take fewer than the field; 0 is no further limit.
    int size = 0;
    /// Further headings under which a sheet may have it.
    QStringList synonyms;
};

struct Table {
    List list = List::Farms;
    store::DatabaseFile file = store::DatabaseFile::Main;
    QString table;
    /// Empty for a table without a key, whose rows are known by their name.
    QString key;
    /// Name of the sheet and title of the list.
    QString sheet;
    /// Heading of the keys in a sheet, different for each list, so that the sheet of another list is noticed.
    QString keyHeading;
    QString singular;
    std::vector<Column> columns;
    /// Positions in `columns`; -1 for none.
    int nameColumn = 0;
    int activeColumn = -1;
    /// The first reference: rows are matched by name among those that agree in it.
    int ownerColumn = -1;
    /// Names are expected to differ among the rows that agree in this column.
    int scopeColumn = -1;

    const Column &column(int index) const { return columns[static_cast<std::size_t>(index)]; }
    int columnCount() const { return static_cast<int>(columns.size()); }
    /// The column that refers to a list, or the Parent that leads to it; -1 without one.
    int columnFor(List target) const;
};

const Table &tableOf(List list);

/// Most and least monitoring points of a block.
inline constexpr int LeastPoints = 1;
inline constexpr int MostPoints = 500;

} // namespace lists
