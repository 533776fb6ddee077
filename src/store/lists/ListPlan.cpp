// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/ListPlan.h"

#include "common/PestTypes.h"
#include "store/lists/ListRows.h"
#include "store/lists/ListRules.h"

#include <QSet>

#include <algorithm>

namespace lists
{

namespace
{

/// Words for an answer in a sheet; nothing for a word that is none.
std::optional<bool> answerIn(const QString &text)
{
    static const QStringList Yes{QStringLiteral("yes"), QStringLiteral("y"),      QStringLiteral("true"), QStringLiteral("1"),
                                 QStringLiteral("-1"),  QStringLiteral("active"), QStringLiteral("x"),    QStringLiteral("ja")};
    static const QStringList No{QStringLiteral("no"), QStringLiteral("n"),        QStringLiteral("false"),
                                QStringLiteral("0"),  QStringLiteral("inactive"), QStringLiteral("nee")};
    const QString word = text.trimmed().toLower();
    return Yes.contains(word) ? std::optional(true) : No.contains(word) ? std::optional(false) : std::nullopt;
}

/// The whole number that a cell shows, also "5.0" as some programs write it.
std::optional<std::int32_t> wholeNumberIn(const QString &text)
{
    QString digits = text.trimmed();
    if (const qsizetype point = digits.indexOf(u'.'); point > 0) {
        const QStringView decimals = QStringView(digits).mid(point + 1);
        if (std::any_of(decimals.begin(), decimals.end(), [](QChar c) { return c != u'0'; })) {
            return std::nullopt;
        }
        digits.truncate(point);
    }
    bool isNumber = false;
    const std::int32_t number = digits.toInt(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

/// Keys that more than one row names.
QSet<QString> repeatedKeys(const GivenList &given)
{
    QSet<QString> seen;
    QSet<QString> repeated;
    for (const GivenRow &row : given.rows) {
        const QString key = row.keyText.trimmed();
        if (!key.isEmpty() && seen.contains(key)) {
            repeated.insert(key);
        }
        seen.insert(key);
    }
    return repeated;
}

QString quoted(const QString &text)
{
    return QStringLiteral("\"%1\"").arg(text);
}

} // namespace

bool GivenRow::isBlank() const
{
    return std::all_of(cells.begin(), cells.end(), [](const std::optional<sheets::Cell> &cell) {
        return !cell || (cell->text.trimmed().isEmpty() && !cell->formula);
    });
}

Counts Plan::total() const
{
    Counts sum;
    for (const Counts &one : counts) {
        sum.added += one.added;
        sum.changed += one.changed;
        sum.unchanged += one.unchanged;
        sum.refused += one.refused;
    }
    return sum;
}

bool Plan::refuses() const
{
    return std::any_of(faults.begin(), faults.end(), [](const Fault &fault) { return fault.refuses; });
}

QString summary(const Counts &counts)
{
    return QStringLiteral("%1 new, %2 changed, %3 refused").arg(counts.added).arg(counts.changed).arg(counts.refused);
}

/// A given row on its way to a change.
struct Planner::RowWork {
    const GivenList &given;
    const GivenRow &row;
    const QSet<QString> &repeated;
    const Table &table;
    const Record *before = nullptr;
    Record after;
    std::vector<Fault> faults;

    void fault(const QString &column, const QString &value, const QString &reason, bool refuses = true)
    {
        faults.push_back({given.list, given.sheet, row.number, column, value, reason, refuses});
    }
    void fault(int column, const QString &value, const QString &reason) { fault(table.column(column).heading, value, reason); }
    const sheets::Cell *cell(int column) const
    {
        const auto index = static_cast<std::size_t>(column);
        return index < row.cells.size() && row.cells[index] ? &*row.cells[index] : nullptr;
    }
    QString text(int column) const
    {
        const sheets::Cell *found = cell(column);
        return found ? found->text.trimmed() : QString();
    }
    bool isRefused() const
    {
        return std::any_of(faults.begin(), faults.end(), [](const Fault &fault) { return fault.refuses; });
    }
};

Planner::Planner(const FarmLists &lists, Matching matching, std::int32_t farm) : lists_(lists), matching_(matching), farm_(farm)
{
    for (const List list : AllLists) {
        lastStored_[indexOf(list)] = lists.lastKey(list);
    }
}

const Record *Planner::stored(List list, std::int32_t key) const
{
    return key <= lastStored_[indexOf(list)] ? lists_.find(list, key) : nullptr;
}

void Planner::add(const GivenList &given)
{
    const QSet<QString> repeated = repeatedKeys(given);
    for (const GivenRow &row : given.rows) {
        RowWork work{given, row, repeated, tableOf(given.list), nullptr, newRecord(given.list), {}};
        addRow(work);
        finish(work);
    }
}

void Planner::addFaults(const std::vector<Fault> &faults)
{
    plan_.faults.insert(plan_.faults.end(), faults.begin(), faults.end());
}

void Planner::addRow(RowWork &work)
{
    if (!work.row.refusal.isEmpty()) {
        work.fault(QString(), {}, work.row.refusal);
        return;
    }
    if (!findRow(work)) {
        return;
    }
    parseCells(work);
    if (!work.before && (matching_ == Matching::ByKeyOrName || work.table.key.isEmpty())) {
        findByName(work);
    }
    if (!work.before) {
        addDefaults(work);
        work.after.key = lists_.lastKey(work.given.list) + 1;
    }
    for (const Finding &finding : checkRecord(lists_, work.given.list, work.after, work.before)) {
        const bool hasFault = std::any_of(work.faults.begin(), work.faults.end(), [&](const Fault &fault) {
            return fault.column == work.table.column(finding.column).heading;
        });
        // What could not be read is not missing as well.
        if (!hasFault) {
            work.fault(work.table.column(finding.column).heading, work.text(finding.column), finding.reason, finding.refuses);
        }
    }
}

bool Planner::findRow(RowWork &work)
{
    if (work.row.keyText.trimmed().isEmpty()) {
        return true;
    }
    if (work.repeated.contains(work.row.keyText.trimmed())) {
        work.fault(work.table.keyHeading, work.row.keyText, QStringLiteral("Several rows have this key."));
        return false;
    }
    return findByKey(work);
}

bool Planner::findByKey(RowWork &work)
{
    const QString &text = work.row.keyText;
    const std::optional<std::int32_t> key = wholeNumberIn(text);
    if (!key) {
        work.fault(work.table.keyHeading, text, QStringLiteral("This is not a key. Leave it blank for a new row."));
        return false;
    }
    work.before = stored(work.given.list, *key);
    if (work.before) {
        work.after = *work.before;
        return true;
    }
    QString reason = QStringLiteral("There is no %1 with this key. Leave it blank for a new row.").arg(work.table.singular);
    for (const List list : AllLists) {
        const Record *other = tableOf(list).key.isEmpty() ? nullptr : stored(list, *key);
        if (other) {
            reason +=
                QStringLiteral(" It is the key of the %1 %2.").arg(tableOf(list).singular, quoted(lists_.name(list, *other)));
            break;
        }
    }
    work.fault(work.table.keyHeading, text, reason);
    return false;
}

void Planner::parseCells(RowWork &work)
{
    for (int column = 0; column < work.table.columnCount(); ++column) {
        const sheets::Cell *cell = work.cell(column);
        if (!cell) {
            continue;
        }
        if (cell->formula) {
            work.fault(column, cell->text, QStringLiteral("The cell holds a formula. Paste it as a value."));
        } else if (cell->kind == sheets::CellKind::Error) {
            work.fault(column, cell->text, QStringLiteral("The cell holds an error."));
        } else if (cell->kind == sheets::CellKind::Date) {
            work.fault(column, cell->text,
                       QStringLiteral("The spreadsheet made a date of it. Format the column as text and type it again."));
        } else {
            parseCell(work, column, *cell);
        }
    }
    checkParents(work);
}

void Planner::parseCell(RowWork &work, int column, const sheets::Cell &cell)
{
    const QString text = cell.text.trimmed();
    switch (work.table.column(column).kind) {
    case ColumnKind::Text:
        work.after.set(column, text);
        break;
    case ColumnKind::Points:
        if (const std::optional<std::int32_t> number = wholeNumberIn(text)) {
            work.after.set(column, QString::number(*number));
        } else if (!text.isEmpty()) {
            work.fault(column, text,
                       QStringLiteral("Monitoring points are a whole number from %1 to %2.").arg(LeastPoints).arg(MostPoints));
        }
        break;
    case ColumnKind::YesNo:
        if (const std::optional<bool> answer = answerIn(text)) {
            work.after.set(column, *answer ? QStringLiteral("1") : QStringLiteral("0"));
        } else if (!text.isEmpty()) {
            work.fault(column, text, QStringLiteral("The answer is Yes or No."));
        }
        break;
    case ColumnKind::PestKind:
        work.after.set(column, pestTypeKind(text));
        break;
    case ColumnKind::Reference:
        parseReference(work, column, text);
        break;
    case ColumnKind::References:
        parseReferences(work, column, text);
        break;
    case ColumnKind::Parent:
        break;
    }
}

void Planner::parseReference(RowWork &work, int column, const QString &text)
{
    if (text.isEmpty()) {
        work.after.set(column, {});
        return;
    }
    const List target = *work.table.column(column).target;
    const QString singular = tableOf(target).singular;
    const QList<std::int32_t> all = lists_.referredTo(target, text);
    const QList<std::int32_t> keys = narrowed(work, column, all);
    if (keys.size() == 1) {
        work.after.set(column, QString::number(keys.front()));
    } else if (all.isEmpty()) {
        work.fault(column, text, QStringLiteral("There is no %1 of this name.").arg(singular));
    } else if (keys.isEmpty()) {
        work.fault(column, text, QStringLiteral("No %1 of this name fits the other cells of the row.").arg(singular));
    } else {
        work.fault(column, text,
                   QStringLiteral("%1 rows have this name. Write %2 instead.")
                       .arg(keys.size())
                       .arg(quoted(lists_.reference(target, keys.front()))));
    }
}

/// The keys that agree with the Parent columns of the row; among several, those of the chosen farm.
QList<std::int32_t> Planner::narrowed(const RowWork &work, int column, const QList<std::int32_t> &keys) const
{
    QList<std::int32_t> fitting = keys;
    Record trial = work.after;
    for (int parent = 0; parent < work.table.columnCount(); ++parent) {
        const Column &description = work.table.column(parent);
        const bool leadsHere = description.kind == ColumnKind::Parent
            && (description.from == column || work.table.column(description.from).from == column);
        if (!leadsHere || work.text(parent).isEmpty()) {
            continue;
        }
        const QList<std::int32_t> wanted = lists_.referredTo(*description.target, work.text(parent));
        fitting.removeIf([&](std::int32_t key) {
            trial.set(column, QString::number(key));
            return !wanted.contains(lists_.target(work.given.list, trial, parent));
        });
    }
    const int farm = work.table.columnFor(List::Farms);
    if (fitting.size() > 1 && farm_ != 0 && farm >= 0 && work.table.column(farm).from == column) {
        QList<std::int32_t> ofFarm = fitting;
        ofFarm.removeIf([&](std::int32_t key) {
            trial.set(column, QString::number(key));
            return lists_.target(work.given.list, trial, farm) != farm_;
        });
        return ofFarm.isEmpty() ? fitting : ofFarm;
    }
    return fitting;
}

void Planner::parseReferences(RowWork &work, int column, const QString &text)
{
    const List target = *work.table.column(column).target;
    QList<std::int32_t> keys;
    QStringList unknown;
    // A name may hold a comma, so semicolons are tried first.
    const QChar separator = text.contains(u';') || !lists_.referredTo(target, text).isEmpty() ? u';' : u',';
    for (const QString &part : text.split(separator, Qt::SkipEmptyParts)) {
        const QString name = part.trimmed();
        const QList<std::int32_t> found = lists_.referredTo(target, name);
        if (found.size() == 1) {
            keys.append(found.front());
        } else if (!name.isEmpty()) {
            unknown.append(quoted(name));
        }
    }
    if (unknown.isEmpty()) {
        work.after.set(column, joinedKeys(keys));
    } else {
        work.fault(column, text,
                   QStringLiteral("There is not one %1 of the name %2.")
                       .arg(tableOf(target).singular, unknown.join(QStringLiteral(" or "))));
    }
}

/// A Parent column follows from another one: given without that, it may only say what holds already.
void Planner::checkParents(RowWork &work)
{
    for (int parent = 0; parent < work.table.columnCount(); ++parent) {
        const Column &description = work.table.column(parent);
        if (description.kind != ColumnKind::Parent || work.text(parent).isEmpty()) {
            continue;
        }
        const Column &from = work.table.column(description.from);
        const int root = from.kind == ColumnKind::Parent ? from.from : description.from;
        if (work.cell(root)) {
            continue;
        }
        const std::int32_t holds = lists_.target(work.given.list, work.after, parent);
        if (!lists_.referredTo(*description.target, work.text(parent)).contains(holds)) {
            work.fault(parent, work.text(parent),
                       QStringLiteral("This follows from the column %1; change it there.").arg(work.table.column(root).heading));
        }
    }
}

void Planner::findByName(RowWork &work)
{
    if (work.isRefused()) {
        return;
    }
    addDefaults(work);
    const QString &name = work.after.cell(work.table.nameColumn);
    QList<std::int32_t> keys = name.isEmpty() ? QList<std::int32_t>() : lists_.named(work.given.list, name);
    const int owner = work.table.ownerColumn;
    keys.removeIf(
        [&](std::int32_t key) { return owner >= 0 && lists_.find(work.given.list, key)->cell(owner) != work.after.cell(owner); });
    if (keys.size() > 1) {
        work.fault(work.table.nameColumn, name,
                   QStringLiteral("%1 rows have this name; give the key of the one that is meant.").arg(keys.size()));
    } else if (keys.size() == 1) {
        work.before = lists_.find(work.given.list, keys.front());
        work.after = *work.before;
        parseCells(work);
    }
}

void Planner::addDefaults(RowWork &work)
{
    const int farm = work.table.columnFor(List::Farms);
    if (farm < 0 || work.table.column(farm).kind != ColumnKind::Reference || !work.text(farm).isEmpty()
        || !work.after.cell(farm).isEmpty()) {
        return;
    }
    const std::vector<Record> &farms = lists_.records(List::Farms);
    if (farm_ != 0) {
        work.after.set(farm, QString::number(farm_));
    } else if (farms.size() == 1) {
        work.after.set(farm, QString::number(farms.front().key));
    }
}

void Planner::finish(RowWork &work)
{
    Counts &counts = plan_.counts[indexOf(work.given.list)];
    const bool refused = work.isRefused();
    std::move(work.faults.begin(), work.faults.end(), std::back_inserter(plan_.faults));
    if (refused) {
        ++counts.refused;
    } else if (!work.before) {
        ++counts.added;
        plan_.changes.push_back({work.given.list, std::nullopt, work.after});
        lists_.put(work.given.list, work.after);
    } else if (*work.before == work.after) {
        ++counts.unchanged;
    } else {
        ++counts.changed;
        plan_.changes.push_back({work.given.list, *work.before, work.after});
        lists_.put(work.given.list, work.after);
    }
}

} // namespace lists
