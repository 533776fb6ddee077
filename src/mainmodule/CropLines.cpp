// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/CropLines.h"

#include "mainmodule/LineOrder.h"
#include "store/lists/ListSheets.h"

#include <QHash>

#include <array>

namespace mainmodule
{

using lists::List;

namespace
{

/// From the outermost to the innermost; a level is also the column of its names.
constexpr std::array Levels{List::CropGroups, List::CropTypes, List::Varieties};
constexpr int LevelCount = static_cast<int>(Levels.size());

List listAt(int level)
{
    return Levels[static_cast<std::size_t>(level)];
}

int levelOf(List list)
{
    return list == List::CropGroups ? 0 : list == List::CropTypes ? 1 : 2;
}

class CropLines : public PageLines
{
public:
    CropLines() : PageLines(QStringLiteral("Crops"), List::Varieties)
    {
        for (int level = 0; level < LevelCount; ++level) {
            const lists::Table &table = lists::tableOf(listAt(level));
            columns_.push_back({table.column(table.nameColumn).heading, 2600, true, false, lists::ColumnKind::Text});
        }
    }

    std::vector<PageLine> lines(const lists::FarmLists &lists, const Arrangement &arrangement) const override
    {
        std::vector<PageLine> found;
        addBelow(lists, arrangement, 0, 0, false, found);
        return found;
    }

    bool hasStableOrder() const override { return false; }

    bool isEditable(const PageLine &line, int column) const override
    {
        if (line.key == 0) {
            return column == 0;
        }
        const int level = levelOf(line.list);
        return column == level || column == level + 1;
    }

    lists::GivenList typed(const PageLine &line, const TypedCells &cells) const override
    {
        const auto &[column, text] = *cells.begin();
        const List list = listAt(column);
        const lists::Table &table = lists::tableOf(list);
        lists::GivenRow row;
        row.cells.resize(table.columns.size());
        row.cells[static_cast<std::size_t>(table.nameColumn)] = cellOf(text);
        if (line.key != 0 && line.list == list) {
            row.keyText = QString::number(line.key);
        } else if (line.key != 0) {
            row.cells[static_cast<std::size_t>(table.ownerColumn)] = cellOf(QStringLiteral("#%1").arg(line.key));
        }
        return {list, table.sheet, {row}};
    }

    std::vector<lists::GivenList> pasted(const std::vector<std::vector<sheets::Cell>> &rows, const std::vector<PageLine> &targets,
                                         int firstColumn) const override
    {
        QStringList context;
        if (firstColumn > 0 && !targets.empty()) {
            context = targets.front().texts.mid(LevelCount, firstColumn);
        }
        return lists::givenCrops(rows, firstColumn, context);
    }

    lists::Matching pastedMatching() const override { return lists::Matching::ByKeyOrName; }

    QStringList suggestions(const lists::FarmLists &, int) const override { return {}; }

private:
    static sheets::Cell cellOf(const QString &text)
    {
        return {text.isEmpty() ? sheets::CellKind::Blank : sheets::CellKind::Text, false, text};
    }

    /// Adds the rows of a level that belong to a row of the one above, each followed by its own. A row that fits the filter shows
    /// all that belongs to it; one that does not shows when something in it does. True when anything was added.
    bool addBelow(const lists::FarmLists &lists, const Arrangement &arrangement, int level, std::int32_t owner, bool ownerFits,
                  std::vector<PageLine> &found) const
    {
        const List list = listAt(level);
        const lists::Table &table = lists::tableOf(list);
        std::vector<PageLine> own;
        for (const lists::Record &record : lists.records(list)) {
            if (level == 0 || record.cell(table.ownerColumn).toInt() == owner) {
                PageLine line{list, record.key, QStringList(LevelCount)};
                line.texts[level] = lists.name(list, record);
                own.push_back(std::move(line));
            }
        }
        sortLines(own, level, arrangement.descending);
        bool added = false;
        for (PageLine &line : own) {
            const bool fits = ownerFits || fitsFilter(line, arrangement.filter);
            addPath(lists, line);
            const std::size_t position = found.size();
            const std::int32_t key = line.key;
            found.push_back(std::move(line));
            const bool fitsBelow = level + 1 < LevelCount && addBelow(lists, arrangement, level + 1, key, fits, found);
            if (!fits && !fitsBelow) {
                found.resize(position);
            }
            added = added || fits || fitsBelow;
        }
        return added;
    }

    /// Behind the texts that show, the names of the row and of those above it, for what is pasted below them.
    static void addPath(const lists::FarmLists &lists, PageLine &line)
    {
        QStringList path;
        List list = line.list;
        for (const lists::Record *row = lists.find(list, line.key); row;) {
            const lists::Table &table = lists::tableOf(list);
            path.prepend(lists.name(list, *row));
            if (table.ownerColumn < 0) {
                break;
            }
            list = *table.column(table.ownerColumn).target;
            row = lists.find(list, row->cell(table.ownerColumn).toInt());
        }
        line.texts.append(path);
    }
};

} // namespace

std::unique_ptr<PageLines> cropLines()
{
    return std::make_unique<CropLines>();
}

} // namespace mainmodule
