// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "mainmodule/ListHost.h"
#include "store/lists/ListSheets.h"

#include <QDialog>

#include <memory>

namespace Ui
{
class ImportDialog;
}

namespace mainmodule
{

/// Shows what given rows would do: how many are new, changed and refused, each change and each fault. Accepted, its plan is what
/// the caller writes.
class ImportDialog : public QDialog
{
    Q_OBJECT
public:
    ImportDialog(ListHost &host, const lists::GivenBook &given, lists::Matching matching, QWidget *parent = nullptr);
    ~ImportDialog() override;

    const lists::Plan &plan() const { return plan_; }

private:
    lists::Planner plannerFor(lists::Matching matching) const;
    void makePlan();
    /// How many rows are new only as long as their names do not count.
    void countNamedRows();
    void showSummary();
    void showChanges(const lists::FarmLists &planned);

    std::unique_ptr<Ui::ImportDialog> ui_;
    ListHost &host_;
    const lists::GivenBook given_;
    lists::Matching matching_;
    lists::Plan plan_;
};

} // namespace mainmodule
