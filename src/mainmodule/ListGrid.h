// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "mainmodule/ListCellBox.h"
#include "mainmodule/ListHost.h"
#include "mainmodule/PageLines.h"

#include <QObject>

#include <memory>
#include <vector>

namespace mainmodule
{

/// One list as an editable grid: a line each, then the lines that still miss something, then an empty one to type into. Each cell
/// is stored when it is left; a new line as soon as it has all that it needs.
class ListGrid : public QObject
{
    Q_OBJECT
public:
    ListGrid(controls::FlexGrid &grid, ListHost &host, std::unique_ptr<PageLines> lines);

    const PageLines &page() const { return *page_; }
    const Arrangement &arrangement() const { return arrangement_; }
    /// Reads the lines anew, in order.
    void arrange(const Arrangement &arrangement);
    /// Takes over what was written elsewhere; lines stay where they are.
    void update();

    /// Lines that are not stored, for want of something.
    int unfinishedLines() const { return static_cast<int>(drafts_.size()); }
    /// Stores what is in the open box. False when the box stays open.
    bool leave() { return box_.leave(); }
    bool isEditing() const { return box_.isOpen(); }

    /// Goes to the empty line.
    void startLine();
    void paste();
    void clearCells();
    /// Deletes the selected lines; those with a history become inactive.
    void deleteLines();
    void selectAll();
    void sortByColumn(int column);

Q_SIGNALS:
    /// What was given and what is wrong with it, to be shown until something else is.
    void faultsFound(const std::vector<lists::GivenList> &given, const std::vector<lists::Fault> &faults);
    /// A pasted block has rows that are refused: the user decides about the others.
    void pasteRefused(const std::vector<lists::GivenList> &given);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void layOut();
    void fill();
    void fillRow(int row, const QStringList &texts);
    QString emptyText() const;
    QString describe(int row, int col) const;

    int firstDraftRow() const { return static_cast<int>(lines_.size()) + 1; }
    int emptyRow() const { return firstDraftRow() + unfinishedLines(); }
    bool isStored(int row) const { return row >= 1 && row < firstDraftRow(); }
    bool isDraft(int row) const { return row >= firstDraftRow() && row < emptyRow(); }
    /// A line that is not stored has the key 0.
    PageLine lineAt(int row) const;
    int rowOf(const PageLine &line) const;
    lists::ColumnKind kindOf(int column) const { return page_->columns()[static_cast<std::size_t>(column)].kind; }

    void keyDown(QKeyEvent *event);
    void open(const QString *typed);
    void toggle();
    void move(int rows, int columns);
    bool store(int row, int col, const QString &typed);
    bool storePlan(int row, const TypedCells &cells, const lists::Plan &plan);
    void holdDraft(int row, const TypedCells &cells, const lists::Plan &plan);
    void dropDraft(int row);
    void showConflicts(const std::vector<lists::Conflict> &conflicts);

    controls::FlexGrid &grid_;
    ListHost &host_;
    std::unique_ptr<PageLines> page_;
    Arrangement arrangement_;
    std::vector<PageLine> lines_;
    std::vector<TypedCells> drafts_;
    /// The largest key of the list when it was shown last.
    std::int32_t lastKey_ = 0;
    ListCellBox box_;
};

} // namespace mainmodule
