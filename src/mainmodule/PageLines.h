// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/lists/ListPlan.h"

#include <QStringList>

#include <algorithm>
#include <map>
#include <memory>

namespace mainmodule
{

struct PageColumn {
    QString heading;
    /// Twips.
    int width = 1000;
    bool stretches = false;
    /// Follows from another column and cannot be typed into.
    bool isDerived = false;
    lists::ColumnKind kind = lists::ColumnKind::Text;
};

/// A line of a page: one row of a list, as it is shown.
struct PageLine {
    lists::List list = lists::List::Farms;
    /// 0 for a line that is not stored yet.
    std::int32_t key = 0;
    QStringList texts;

    bool isSameRow(const PageLine &other) const { return list == other.list && key == other.key; }
};

/// What a page shows of its rows, and in which order.
struct Arrangement {
    /// Lines with this text in any column; empty for all.
    QString filter = {};
    bool activeOnly = false;
    int column = 0;
    bool descending = false;
};

/// Texts typed into the cells of a line, by column.
using TypedCells = std::map<int, QString>;

/// How one page shows its list or lists, and what typed and pasted texts give. Knows no widget.
class PageLines
{
public:
    virtual ~PageLines() = default;

    const QString &title() const { return title_; }
    const std::vector<PageColumn> &columns() const { return columns_; }
    /// The list whose workbook or sheet is opened here by default.
    lists::List list() const { return list_; }
    /// Where a new line begins. The farm of a block is the chosen one unless it is typed.
    int firstColumn() const
    {
        const auto typed = std::find_if(columns_.begin(), columns_.end(), [](const PageColumn &one) { return !one.isDerived; });
        return list_ == lists::List::Blocks ? lists::tableOf(list_).nameColumn : static_cast<int>(typed - columns_.begin());
    }
    bool hasActive() const { return lists::tableOf(list_).activeColumn >= 0; }

    virtual std::vector<PageLine> lines(const lists::FarmLists &lists, const Arrangement &arrangement) const = 0;
    /// Whether lines stay where they are when others are added, until they are sorted again.
    virtual bool hasStableOrder() const = 0;
    virtual bool isEditable(const PageLine &line, int column) const = 0;
    /// What typed cells mean: a change of a stored line, or a new row.
    virtual lists::GivenList typed(const PageLine &line, const TypedCells &cells) const = 0;
    /// What pasted rows mean. `targets` are the lines from the current one on; rows beyond them are new.
    virtual std::vector<lists::GivenList> pasted(const std::vector<std::vector<sheets::Cell>> &rows,
                                                 const std::vector<PageLine> &targets, int firstColumn) const = 0;
    virtual lists::Matching pastedMatching() const = 0;
    /// Texts to choose from in a column; empty where any text may be typed.
    virtual QStringList suggestions(const lists::FarmLists &lists, int column) const = 0;

protected:
    PageLines(QString title, lists::List list) : title_(std::move(title)), list_(list) {}
    std::vector<PageColumn> columns_;

private:
    QString title_;
    lists::List list_;
};

} // namespace mainmodule
