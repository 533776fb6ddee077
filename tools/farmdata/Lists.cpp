// SPDX-License-Identifier: GPL-3.0-or-later
#include "Lists.h"

#include "Output.h"

#include "common/SessionContext.h"
#include "store/Connection.h"
#include "store/lists/ListBooks.h"
#include "store/lists/ListSheets.h"
#include "store/lists/ListWriter.h"

#include <QDir>

using namespace lists;

namespace
{

void open(SessionContext &session, const QString &databasesFolder)
{
    session.DatabasePath = QDir(databasesFolder).absolutePath() + u'/';
    openListDatabases(session);
}

FarmLists readLists(SessionContext &session)
{
    FarmLists stored;
    stored.read(session);
    for (const List list : AllLists) {
        if (!stored.failure(list).isEmpty()) {
            throw basic::RunTimeError(basic::ErrorNumber::PathFileAccess, stored.failure(list));
        }
    }
    return stored;
}

void printFault(const Fault &fault)
{
    QStringList position{fault.sheet};
    if (fault.row > 0) {
        position.append(QStringLiteral("row %1").arg(fault.row));
    }
    if (!fault.column.isEmpty()) {
        position.append(fault.column);
    }
    if (!fault.value.isEmpty()) {
        position.append(QStringLiteral("\"%1\"").arg(fault.value));
    }
    const QString kind = fault.refuses ? QStringLiteral("REFUSED") : QStringLiteral("note");
    printLine(QStringLiteral("  %1: %2: %3").arg(kind, position.join(QStringLiteral(", ")), fault.reason));
}

void printPlan(const Plan &plan)
{
    for (const List list : AllLists) {
        const Counts &counts = plan.counts[indexOf(list)];
        if (counts.added + counts.changed + counts.unchanged + counts.refused > 0) {
            printLine(QStringLiteral("%1: %2, %3 as they were").arg(tableOf(list).sheet, summary(counts)).arg(counts.unchanged));
        }
    }
    for (const Fault &fault : plan.faults) {
        printFault(fault);
    }
}

} // namespace

void exportLists(const QString &databasesFolder, const QString &file)
{
    SessionContext session;
    open(session, databasesFolder);
    writeBook(readLists(session), file);
    printLine(QStringLiteral("The farm lists were written to %1.").arg(file));
}

bool importLists(const QString &databasesFolder, const QString &file, const ListImport &options)
{
    SessionContext session;
    open(session, databasesFolder);
    const GivenBook given = givenBook(sheets::readWorkbook(file));
    Planner planner(readLists(session), options.byName ? Matching::ByKeyOrName : Matching::ByKey, 0);
    planner.addFaults(given.faults);
    for (const GivenList &list : given.lists) {
        planner.add(list);
    }
    const Plan &plan = planner.plan();
    printPlan(plan);
    if (plan.refuses()) {
        printLine(QStringLiteral("Nothing was written: correct what was refused, then import again."));
        return false;
    }
    if (options.dryRun) {
        printLine(QStringLiteral("Nothing was written: this was a dry run."));
        return true;
    }
    const std::vector<Conflict> conflicts = writeChanges(session, plan.changes);
    for (const Conflict &conflict : conflicts) {
        printLine(QStringLiteral("  REFUSED: %1").arg(conflict.reason));
    }
    printLine(conflicts.empty() ? (plan.changes.size() == 1 ? QStringLiteral("1 row was written.")
                                                            : QStringLiteral("%1 rows were written.").arg(plan.changes.size()))
                                : QStringLiteral("Nothing was written."));
    return conflicts.empty();
}
