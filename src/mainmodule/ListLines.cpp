// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/ListLines.h"

#include "common/PestTypes.h"
#include "mainmodule/LineOrder.h"
#include "store/lists/ListSheets.h"

#include <algorithm>
#include <numeric>

namespace mainmodule
{

using lists::ColumnKind;
using lists::List;

namespace
{

int widthOf(ColumnKind kind)
{
    switch (kind) {
    case ColumnKind::Points:
    case ColumnKind::YesNo:
        return 800;
    case ColumnKind::PestKind:
        return 1100;
    case ColumnKind::Parent:
        return 1500;
    case ColumnKind::Text:
    case ColumnKind::Reference:
    case ColumnKind::References:
        break;
    }
    return 2200;
}

sheets::Cell textCell(const QString &text)
{
    return {text.isEmpty() ? sheets::CellKind::Blank : sheets::CellKind::Text, false, text};
}

class ListLines : public PageLines
{
public:
    explicit ListLines(List list) : PageLines(lists::tableOf(list).sheet, list), table_(lists::tableOf(list))
    {
        for (const lists::Column &column : table_.columns) {
            const bool isShort =
                column.kind == ColumnKind::Points || column.kind == ColumnKind::YesNo || column.kind == ColumnKind::PestKind;
            columns_.push_back({column.heading, widthOf(column.kind), !isShort, column.kind == ColumnKind::Parent, column.kind});
        }
    }

    std::vector<PageLine> lines(const lists::FarmLists &lists, const Arrangement &arrangement) const override
    {
        std::vector<PageLine> found;
        for (const lists::Record &record : lists.records(list())) {
            if (arrangement.activeOnly && table_.activeColumn >= 0 && record.cell(table_.activeColumn) != u"1") {
                continue;
            }
            PageLine line{list(), record.key, {}};
            for (int column = 0; column < table_.columnCount(); ++column) {
                line.texts.append(lists.shown(list(), record, column));
            }
            if (fitsFilter(line, arrangement.filter)) {
                found.push_back(std::move(line));
            }
        }
        if (arrangement.column != table_.nameColumn) {
            sortLines(found, table_.nameColumn, false);
        }
        sortLines(found, arrangement.column, arrangement.descending);
        return found;
    }

    bool hasStableOrder() const override { return true; }

    bool isEditable(const PageLine &, int column) const override { return !columns_[static_cast<std::size_t>(column)].isDerived; }

    lists::GivenList typed(const PageLine &line, const TypedCells &cells) const override
    {
        lists::GivenRow row;
        row.keyText = line.key == 0 ? QString() : QString::number(line.key);
        row.cells.resize(table_.columns.size());
        for (const auto &[column, text] : cells) {
            row.cells[static_cast<std::size_t>(column)] = textCell(text);
        }
        return {list(), table_.sheet, {row}};
    }

    std::vector<lists::GivenList> pasted(const std::vector<std::vector<sheets::Cell>> &rows, const std::vector<PageLine> &targets,
                                         int firstColumn) const override
    {
        std::vector<int> order(table_.columns.size());
        std::iota(order.begin(), order.end(), 0);
        lists::GivenList given = lists::givenRows(list(), rows, order, firstColumn);
        for (std::size_t i = 0; i < given.rows.size() && i < targets.size(); ++i) {
            if (given.rows[i].keyText.isEmpty() && targets[i].key != 0) {
                given.rows[i].keyText = QString::number(targets[i].key);
            }
        }
        std::erase_if(given.rows, [](const lists::GivenRow &row) { return row.isBlank(); });
        return {given};
    }

    lists::Matching pastedMatching() const override { return lists::Matching::ByKey; }

    QStringList suggestions(const lists::FarmLists &lists, int column) const override
    {
        const lists::Column &description = table_.column(column);
        if (description.kind == ColumnKind::PestKind) {
            return pestTypeCaptions();
        }
        if (description.kind == ColumnKind::YesNo) {
            return {QStringLiteral("Yes"), QStringLiteral("No")};
        }
        QStringList names;
        if (description.kind == ColumnKind::Reference || description.kind == ColumnKind::References) {
            for (const lists::Record &record : lists.records(*description.target)) {
                names.append(lists.reference(*description.target, record.key));
            }
            names.sort(Qt::CaseInsensitive);
        }
        return names;
    }

private:
    const lists::Table &table_;
};

} // namespace

std::unique_ptr<PageLines> listLines(List list)
{
    return std::make_unique<ListLines>(list);
}

} // namespace mainmodule
