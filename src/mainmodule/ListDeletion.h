// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "mainmodule/PageLines.h"

#include "common/SessionContext.h"

namespace mainmodule
{

/// What deleting lines means: a row without history is deleted; one with history becomes inactive, or is not changed where its
/// list knows no inactive rows. Errors of the databases pass through: without the history nothing may be deleted.
class ListDeletion
{
public:
    ListDeletion(SessionContext &session, const lists::FarmLists &lists, const std::vector<PageLine> &lines);

    const std::vector<lists::Change> &changes() const { return changes_; }
    /// The rows that are not deleted, each with what refers to it.
    const std::vector<lists::Fault> &held() const { return held_; }
    /// A sentence for the status line.
    QString text() const;

private:
    void add(const lists::FarmLists &lists, lists::List list, const lists::Record &record, const QString &holders);

    std::vector<lists::Change> changes_;
    std::vector<lists::Fault> held_;
    QStringList deleted_;
    QStringList inactive_;
    QStringList unchanged_;
};

} // namespace mainmodule
