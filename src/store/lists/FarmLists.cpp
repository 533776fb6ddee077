// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/FarmLists.h"

#include "common/MonitoringConstants.h"
#include "common/PestTypes.h"
#include "store/lists/ListRows.h"

#include <QFileInfo>

#include <algorithm>
#include <limits>

namespace lists
{

namespace
{

constexpr int LongestText = 255;
const QString PathSeparator = QStringLiteral(" / ");

QString folded(const QString &name)
{
    return name.trimmed().toCaseFolded();
}

QString answerText(const QString &cell)
{
    return cell == u"1" ? QStringLiteral("Yes") : QStringLiteral("No");
}

} // namespace

Record newRecord(List list)
{
    const Table &table = tableOf(list);
    Record record{0, Cells(table.columns.size())};
    for (int i = 0; i < table.columnCount(); ++i) {
        if (table.column(i).kind == ColumnKind::YesNo) {
            record.set(i, QStringLiteral("1"));
        } else if (table.column(i).kind == ColumnKind::Points) {
            record.set(i, QString::number(DefaultPoints));
        }
    }
    return record;
}

dao::DatabaseHandle &handleFor(SessionContext &session, const Table &table)
{
    return table.file == store::DatabaseFile::Spray ? session.dbSpray : session.dbMain;
}

void FarmLists::read(SessionContext &session)
{
    for (const List list : AllLists) {
        StoredTable &stored = tables_[indexOf(list)];
        stored = {};
        try {
            readTable(session, tableOf(list));
        } catch (const basic::RunTimeError &error) {
            stored = {};
            stored.failure = error.description();
        }
    }
    basic::runOrIgnore([&] { readLastKeys(*session.dbMain); });
}

void FarmLists::readTable(SessionContext &session, const Table &table)
{
    dao::Database &database = *handleFor(session, table);
    StoredTable &stored = tables_[indexOf(table.list)];
    const dao::TableDef definition = database.tableDef(table.table);
    stored.readOnly = database.isReadOnly() || !QFileInfo(database.Name()).isWritable();
    for (const Column &column : table.columns) {
        const dao::Field *field = definition.findField(column.field);
        const bool isText = field && field->type == dao::FieldType::Text;
        const int fieldSize = isText ? field->size : LongestText;
        stored.sizes.push_back(column.size > 0 ? std::min(column.size, fieldSize) : fieldSize);
        stored.numeric.push_back(field && column.kind == ColumnKind::Text && !isText);
    }
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    dao::Recordset rows = database.OpenRecordset(rowsBetween(table, least, most));
    const ListRows reader(table, definition, rows);
    for (; !rows.Eof(); rows.MoveNext()) {
        stored.records.push_back(reader.read(rows));
    }
    if (table.list == List::Pests) {
        const QHash<std::int32_t, QString> types = readPestCropTypes(database, least, most);
        for (Record &pest : stored.records) {
            pest.set(table.columnCount() - 1, types.value(pest.key));
        }
    }
    index(table);
}

void FarmLists::index(const Table &table)
{
    StoredTable &stored = tables_[indexOf(table.list)];
    if (table.key.isEmpty()) {
        std::int32_t number = 0;
        for (Record &record : stored.records) {
            record.key = ++number;
        }
    }
    for (std::size_t i = 0; i < stored.records.size(); ++i) {
        const Record &record = stored.records[i];
        stored.positions.insert(record.key, i);
        stored.names.insert(folded(record.cell(table.nameColumn)), record.key);
        stored.lastKey = std::max(stored.lastKey, record.key);
    }
}

/// Keys of rows that are gone.
void FarmLists::readLastKeys(dao::Database &database)
{
    if (!database.tableNames().contains(store::LastKeysTable, Qt::CaseInsensitive)) {
        return;
    }
    dao::Recordset rows = database.OpenRecordset(QStringLiteral("Select * from ") + store::LastKeysTable);
    for (; !rows.Eof(); rows.MoveNext()) {
        for (const List list : AllLists) {
            if (tableOf(list).table.compare(rows.text("ListTable"), Qt::CaseInsensitive) == 0) {
                std::int32_t &last = tables_[indexOf(list)].lastKey;
                last = std::max(last, rows.longValue("LastKey"));
            }
        }
    }
}

const Record *FarmLists::find(List list, std::int32_t key) const
{
    const StoredTable &stored = tables_[indexOf(list)];
    const auto found = stored.positions.constFind(key);
    return found == stored.positions.constEnd() ? nullptr : &stored.records[*found];
}

std::int32_t FarmLists::lastKey(List list) const
{
    return tables_[indexOf(list)].lastKey;
}

void FarmLists::put(List list, const Record &record)
{
    StoredTable &stored = tables_[indexOf(list)];
    const int nameColumn = tableOf(list).nameColumn;
    const auto found = stored.positions.constFind(record.key);
    if (found == stored.positions.constEnd()) {
        stored.positions.insert(record.key, stored.records.size());
        stored.records.push_back(record);
    } else {
        Record &known = stored.records[*found];
        stored.names.remove(folded(known.cell(nameColumn)), record.key);
        known = record;
    }
    stored.names.insert(folded(record.cell(nameColumn)), record.key);
    stored.lastKey = std::max(stored.lastKey, record.key);
}

void FarmLists::remove(List list, std::int32_t key)
{
    StoredTable &stored = tables_[indexOf(list)];
    const auto found = stored.positions.constFind(key);
    if (found == stored.positions.constEnd()) {
        return;
    }
    const std::size_t position = *found;
    stored.names.remove(folded(stored.records[position].cell(tableOf(list).nameColumn)), key);
    stored.records.erase(stored.records.begin() + static_cast<std::ptrdiff_t>(position));
    stored.positions.remove(key);
    for (std::size_t &other : stored.positions) {
        other -= other > position ? 1 : 0;
    }
}

QString FarmLists::shown(List list, const Record &record, int column) const
{
    const Column &description = tableOf(list).column(column);
    const QString &cell = record.cell(column);
    switch (description.kind) {
    case ColumnKind::YesNo:
        return answerText(cell);
    case ColumnKind::PestKind:
        return pestTypeCaption(cell);
    case ColumnKind::Reference:
        return cell.isEmpty() ? QString() : reference(*description.target, cell.toInt());
    case ColumnKind::Parent: {
        const Record *parent = find(*description.target, target(list, record, column));
        return parent ? name(*description.target, *parent) : QString();
    }
    case ColumnKind::References: {
        QStringList names;
        for (const std::int32_t key : splitKeys(cell)) {
            names.append(reference(*description.target, key));
        }
        names.sort(Qt::CaseInsensitive);
        return names.join(QStringLiteral("; "));
    }
    case ColumnKind::Text:
    case ColumnKind::Points:
        break;
    }
    return cell;
}

std::int32_t FarmLists::target(List list, const Record &record, int column) const
{
    const Table &table = tableOf(list);
    const Column &description = table.column(column);
    if (description.kind != ColumnKind::Parent) {
        return record.cell(column).toInt();
    }
    const List source = *table.column(description.from).target;
    const Record *row = find(source, target(list, record, description.from));
    const int further = tableOf(source).columnFor(*description.target);
    return row && further >= 0 ? target(source, *row, further) : 0;
}

QList<std::int32_t> FarmLists::named(List list, const QString &name) const
{
    QList<std::int32_t> keys = tables_[indexOf(list)].names.values(folded(name));
    std::sort(keys.begin(), keys.end());
    return keys;
}

/// The names of the owners and of the row itself.
QString FarmLists::path(List list, std::int32_t key) const
{
    const Record *record = find(list, key);
    if (!record) {
        return QStringLiteral("#%1").arg(key);
    }
    const Table &table = tableOf(list);
    const QString own = name(list, *record);
    if (table.ownerColumn < 0 || record->cell(table.ownerColumn).isEmpty()) {
        return own;
    }
    return path(*table.column(table.ownerColumn).target, record->cell(table.ownerColumn).toInt()) + PathSeparator + own;
}

QString FarmLists::reference(List list, std::int32_t key) const
{
    const Record *record = find(list, key);
    if (!record) {
        return QStringLiteral("#%1").arg(key);
    }
    const QString own = name(list, *record);
    if (own.isEmpty()) {
        return QStringLiteral("#%1").arg(key);
    }
    const QList<std::int32_t> same = named(list, own);
    if (same.size() == 1) {
        return own;
    }
    const QString whole = path(list, key);
    const bool isUnique =
        std::count_if(same.begin(), same.end(), [&](std::int32_t other) { return folded(path(list, other)) == folded(whole); })
        == 1;
    return isUnique ? whole : QStringLiteral("%1 #%2").arg(own).arg(key);
}

QList<std::int32_t> FarmLists::referredTo(List list, const QString &text) const
{
    const QString wanted = text.trimmed();
    if (const QList<std::int32_t> keys = named(list, wanted); !keys.isEmpty()) {
        return keys;
    }
    if (const qsizetype mark = wanted.lastIndexOf(u'#'); mark >= 0) {
        bool isNumber = false;
        const std::int32_t key = QStringView(wanted).mid(mark + 1).toInt(&isNumber);
        const Record *record = isNumber ? find(list, key) : nullptr;
        const QString given = wanted.left(mark);
        if (record && (given.isEmpty() || folded(given) == folded(name(list, *record)))) {
            return {key};
        }
    }
    QList<std::int32_t> keys;
    // Names may hold the separator themselves, so each of them may be the one before the name.
    for (qsizetype at = wanted.indexOf(PathSeparator); at >= 0 && keys.isEmpty(); at = wanted.indexOf(PathSeparator, at + 1)) {
        for (const std::int32_t key : named(list, wanted.mid(at + PathSeparator.size()))) {
            const QString whole = PathSeparator + folded(path(list, key));
            if (whole.endsWith(PathSeparator + folded(wanted))) {
                keys.append(key);
            }
        }
    }
    return keys;
}

int FarmLists::size(List list, int column) const
{
    const std::vector<int> &sizes = tables_[indexOf(list)].sizes;
    if (!sizes.empty()) {
        return sizes[static_cast<std::size_t>(column)];
    }
    const int limit = tableOf(list).column(column).size;
    return limit > 0 ? limit : LongestText;
}

bool FarmLists::isNumeric(List list, int column) const
{
    const std::vector<bool> &numeric = tables_[indexOf(list)].numeric;
    return !numeric.empty() && numeric[static_cast<std::size_t>(column)];
}

} // namespace lists
