// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainmodule/ListDeletion.h"

#include "store/lists/ListHolders.h"

namespace mainmodule
{

namespace
{

QString named(const QStringList &names)
{
    return names.size() == 1 ? QStringLiteral("\"%1\"").arg(names.front()) : QStringLiteral("%1 lines").arg(names.size());
}

} // namespace

ListDeletion::ListDeletion(SessionContext &session, const lists::FarmLists &lists, const std::vector<PageLine> &lines)
{
    lists::HolderReader reader(session);
    for (const PageLine &line : lines) {
        if (const lists::Record *record = lists.find(line.list, line.key)) {
            const lists::Holders holders = reader.holdersOf(line.list, *record);
            add(lists, line.list, *record, holders.none() ? QString() : holders.text());
        }
    }
}

void ListDeletion::add(const lists::FarmLists &lists, lists::List list, const lists::Record &record, const QString &holders)
{
    const lists::Table &table = lists::tableOf(list);
    const QString &name = lists.name(list, record);
    if (holders.isEmpty()) {
        changes_.push_back({list, record, std::nullopt});
        deleted_.append(name);
        return;
    }
    const auto hold = [&](const QString &outcome, bool refuses) {
        held_.push_back({list, table.sheet, 0, {}, name, QStringLiteral("Used by %1; %2").arg(holders, outcome), refuses});
    };
    if (table.activeColumn < 0) {
        unchanged_.append(name);
        hold(QStringLiteral("it was not deleted."), true);
    } else if (record.cell(table.activeColumn) == u"1") {
        lists::Record inactive = record;
        inactive.set(table.activeColumn, QStringLiteral("0"));
        changes_.push_back({list, record, inactive});
        inactive_.append(name);
        hold(QStringLiteral("it was made inactive."), false);
    } else {
        unchanged_.append(name);
        hold(QStringLiteral("it was not deleted and remains inactive."), true);
    }
}

QString ListDeletion::text() const
{
    QStringList parts;
    if (!deleted_.isEmpty()) {
        parts.append(QStringLiteral("%1 deleted").arg(named(deleted_)));
    }
    if (!inactive_.isEmpty()) {
        parts.append(QStringLiteral("%1 made inactive").arg(named(inactive_)));
    }
    if (!unchanged_.isEmpty()) {
        parts.append(QStringLiteral("%1 in use and not deleted").arg(named(unchanged_)));
    }
    return parts.join(QStringLiteral(", "));
}

} // namespace mainmodule
