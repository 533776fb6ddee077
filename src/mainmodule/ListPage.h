// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "mainmodule/ListGrid.h"
#include "store/lists/ListSheets.h"

#include <QWidget>

namespace Ui
{
class ListPage;
}

namespace mainmodule
{

/// A page of the main module: one list in a grid, its filter, its faults and its buttons.
class ListPage : public QWidget
{
    Q_OBJECT
public:
    ListPage(ListHost &host, std::unique_ptr<PageLines> lines, QWidget *parent = nullptr);
    ~ListPage() override;

    const QString &title() const { return grid_->page().title(); }
    bool shows(lists::List list) const;
    /// Reads the list in order; when the page comes to the front, and after a step back.
    void activate();
    /// Takes over what was written elsewhere.
    void refresh() { grid_->update(); }
    void focusGrid();
    /// The empty line, to type or paste into.
    void startLine() { grid_->startLine(); }
    /// Stores what is being typed; false when it is refused.
    bool leave() { return grid_->leave(); }
    bool isEditing() const { return grid_->isEditing(); }
    int unfinishedLines() const { return grid_->unfinishedLines(); }
    void setUndo(bool canUndo, bool canRedo);
    /// Hides what a deletion reported, once it is taken back.
    void forgetDeletion();
    void showFaults(const std::vector<lists::GivenList> &given, const std::vector<lists::Fault> &faults);
    /// Shows what a workbook would change, and writes what the user agrees to.
    void importBook(const QString &path, const sheets::Workbook &book);

Q_SIGNALS:
    void undoRequested();
    void redoRequested();
    void starterRequested();
    void saveRequested();

private:
    void setUpActions();
    void filterChanged();
    void openBook();
    void review(const QString &title, const lists::GivenBook &given, lists::Matching matching);
    void showObstacle();

    std::unique_ptr<Ui::ListPage> ui_;
    ListHost &host_;
    std::unique_ptr<ListGrid> grid_;
};

} // namespace mainmodule
