// SPDX-License-Identifier: GPL-3.0-or-later
#include "Import.h"

#include "Output.h"
#include "Progress.h"

#include "platform/basic/RunTimeError.h"
#include "platform/basic/TextFiles.h"
#include "platform/dao/CommitScope.h"
#include "platform/dao/FileFormat.h"
#include "platform/dao/JetValues.h"
#include "platform/dao/Workspace.h"
#include "platform/jet/Database.h"
#include "store/Staging.h"

#include <QFile>

#include <algorithm>
#include <map>

using basic::ErrorNumber;
using basic::RunTimeError;
using dao::FieldType;
using store::DatabaseFile;
using store::SchemaTable;

namespace
{

/// A table to copy: its definition in the copy, and for each of its fields the position in a row of the source.
struct TableCopy {
    jet::TableDefinition source;
    dao::TableDef target;
    std::vector<std::size_t> positions;
    /// Position of the autonumber among the target's fields.
    std::optional<int> autonumber;
    QStringList absentFields;
    QStringList leftOutFields;
};

struct FileCopy {
    DatabaseFile file;
    std::unique_ptr<jet::Database> source;
    std::vector<TableCopy> tables;
    QStringList absentTables;
    QStringList leftOutTables;
};

bool sameName(const QString &left, const QString &right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

QString nameOf(jet::ColumnType type)
{
    static const std::map<FieldType, QString> names{
        {FieldType::Boolean, QStringLiteral("a Boolean")}, {FieldType::Integer, QStringLiteral("an Integer")},
        {FieldType::Long, QStringLiteral("a Long")},       {FieldType::Single, QStringLiteral("a Single")},
        {FieldType::Double, QStringLiteral("a Double")},   {FieldType::Date, QStringLiteral("a Date")},
        {FieldType::Text, QStringLiteral("a Text")},
    };
    const std::optional<FieldType> like = dao::fieldTypeOf(type);
    return like ? names.at(*like) : QStringLiteral("of another type");
}

bool fits(jet::ColumnType source, FieldType target)
{
    const std::optional<FieldType> like = dao::fieldTypeOf(source);
    return like == target || (target == FieldType::Long && like == FieldType::Integer)
        || (target == FieldType::Double && like == FieldType::Single);
}

/// The field as the copy has it: the program's type where it is settled, the source's where it is open, and long enough
/// for the source's longest text.
std::optional<dao::Field> fieldFor(const SchemaTable &table, const dao::Field &wanted, const jet::ColumnDefinition &found)
{
    dao::Field field = wanted;
    if (store::isOfOpenType(table, wanted.name)) {
        const std::optional<FieldType> type = dao::fieldTypeOf(found.type);
        if (!type) {
            return std::nullopt;
        }
        field.type = *type;
    } else if (!fits(found.type, wanted.type)) {
        return std::nullopt;
    }
    if (field.type == FieldType::Text) {
        field.size = std::max(field.size, found.characters());
    }
    return field;
}

/// Definition without the fields that the source lacks. A key that the source does not guard against duplicates is no primary
/// key in the copy, so that no row is refused.
dao::TableDef definitionOf(const SchemaTable &table, const std::vector<dao::Field> &fields, bool keyIsUnique)
{
    dao::TableDef definition(table.name);
    for (const dao::Field &field : fields) {
        definition.Append(field);
    }
    const dao::TableDef whole = table.definition();
    for (dao::Index index : whole.Indexes()) {
        if (index.primary && !keyIsUnique) {
            index.primary = index.unique = false;
        }
        definition.Append(index);
    }
    return definition;
}

/// Whether the primary key of the table is this column alone.
bool isPrimary(const jet::TableDefinition &table, const jet::ColumnDefinition &column)
{
    const jet::IndexDefinition *key = table.primaryKey();
    return key != nullptr && key->columns.size() == 1 && &table.columns[key->columns.front().column] == &column;
}

TableCopy planTable(const SchemaTable &wanted, jet::TableDefinition source, QStringList &faults)
{
    TableCopy copy{std::move(source), dao::TableDef(wanted.name), {}, {}, {}, {}};
    std::vector<dao::Field> fields;
    bool keyIsUnique = wanted.hasAutonumber();
    for (const dao::Field &field : wanted.fields) {
        const auto found = std::find_if(copy.source.columns.begin(), copy.source.columns.end(),
                                        [&](const jet::ColumnDefinition &one) { return sameName(one.name, field.name); });
        if (found == copy.source.columns.end()) {
            if (store::isOptionalField(wanted, field.name)) {
                copy.absentFields.append(field.name);
            } else {
                faults.append(QStringLiteral("the table %1 lacks the field %2").arg(wanted.name, field.name));
            }
            continue;
        }
        const std::optional<dao::Field> target = fieldFor(wanted, field, *found);
        if (!target) {
            faults.append(QStringLiteral("the field %1 of the table %2 is %3").arg(field.name, wanted.name, nameOf(found->type)));
            continue;
        }
        if (target->autoIncrement) {
            copy.autonumber = static_cast<int>(fields.size());
        }
        if (field.name == wanted.key && isPrimary(copy.source, *found)) {
            keyIsUnique = true;
        }
        fields.push_back(*target);
        copy.positions.push_back(static_cast<std::size_t>(found - copy.source.columns.begin()));
    }
    for (const jet::ColumnDefinition &field : copy.source.columns) {
        const bool known = std::any_of(wanted.fields.begin(), wanted.fields.end(),
                                       [&](const dao::Field &one) { return sameName(one.name, field.name); });
        if (!known) {
            copy.leftOutFields.append(field.name);
        }
    }
    copy.target = definitionOf(wanted, fields, keyIsUnique);
    return copy;
}

FileCopy planFile(DatabaseFile file, const QString &from, QStringList &faults)
{
    const QString wantedPath = from + u'/' + store::fileName(file);
    const std::optional<QString> path = basic::findPath(wantedPath);
    if (!path) {
        throw RunTimeError(ErrorNumber::FileNotFound, QStringLiteral("%1 does not exist.").arg(wantedPath));
    }
    FileCopy copy{file, jet::Database::open(*path, dao::passwordIn(store::connectText())), {}, {}, {}};
    const QStringList present = copy.source->tableNames();
    for (const SchemaTable &table : store::schema()) {
        if (table.file != file) {
            continue;
        }
        if (present.contains(table.name, Qt::CaseInsensitive)) {
            copy.tables.push_back(planTable(table, copy.source->definition(table.name), faults));
        } else if (table.optional) {
            copy.absentTables.append(table.name);
        } else {
            faults.append(QStringLiteral("%1 lacks the table %2").arg(store::fileName(file), table.name));
        }
    }
    std::copy_if(present.begin(), present.end(), std::back_inserter(copy.leftOutTables), [file](const QString &name) {
        const SchemaTable *known = store::findTable(name);
        return !known || known->file != file;
    });
    return copy;
}

/// The next autonumber follows the last one that the source assigned, also when its row is gone.
void continueNumbering(dao::Database &database, const TableCopy &table, std::int32_t highest)
{
    if (!table.autonumber || table.source.lastAutoNumber <= highest) {
        return;
    }
    const QString key = table.target.Fields()[static_cast<std::size_t>(*table.autonumber)].name;
    dao::Recordset rows = database.OpenRecordset(QStringLiteral("Select * from %1 where %2 =0").arg(table.target.Name(), key),
                                                 dao::RecordsetType::Dynaset);
    rows.AddNew();
    rows.set(key, table.source.lastAutoNumber);
    rows.Update();
    database.Execute(
        QStringLiteral("Delete from %1 where %2 =%3").arg(table.target.Name(), key).arg(table.source.lastAutoNumber));
}

void copyRows(const jet::Database &source, dao::Database &database, const TableCopy &table, Progress &progress)
{
    const QString &name = table.target.Name();
    const std::vector<dao::Field> &fields = table.target.Fields();
    dao::Recordset rows = database.OpenRecordset(QStringLiteral("Select * from %1").arg(name), dao::RecordsetType::Dynaset);
    std::int32_t highest = 0;
    std::uint32_t number = 0;
    source.readRows(table.source.name, [&](const jet::Row &row) {
        ++number;
        try {
            rows.AddNew();
            for (std::size_t i = 0; i < fields.size(); ++i) {
                rows.set(static_cast<int>(i), dao::valueOf(row.values[table.positions[i]]));
            }
            if (table.autonumber) {
                highest = std::max(highest, rows.longValue(*table.autonumber));
            }
            rows.Update();
        } catch (const RunTimeError &error) {
            throw RunTimeError(error.number(),
                               QStringLiteral("Row %1 of %2 cannot be copied: %3").arg(number).arg(name, error.description()));
        }
        progress.advance();
    });
    continueNumbering(database, table, highest);
}

void copyFile(const FileCopy &copy, const QString &path, Progress &progress)
{
    const std::unique_ptr<dao::Database> database = dao::Workspace::CreateDatabase(path, store::connectText());
    dao::CommitScope scope(*database);
    for (const TableCopy &table : copy.tables) {
        database->Append(table.target);
        copyRows(*copy.source, *database, table, progress);
    }
    scope.commit();
}

void report(const FileCopy &copy)
{
    printLine(store::fileName(copy.file));
    for (const TableCopy &table : copy.tables) {
        printLine(QStringLiteral("  %1  %2 of %2 rows").arg(table.target.Name(), -20).arg(table.source.rowCount));
        for (const QString &field : table.absentFields) {
            printLine(QStringLiteral("    without %1, which the program adds when it needs it").arg(field));
        }
        if (!table.leftOutFields.isEmpty()) {
            printLine(QStringLiteral("    left out, not used by this program: fields %1").arg(table.leftOutFields.join(u", ")));
        }
    }
    for (const QString &table : copy.absentTables) {
        printLine(QStringLiteral("  without %1, which the program adds when it needs it").arg(table));
    }
    if (!copy.leftOutTables.isEmpty()) {
        printLine(QStringLiteral("  left out, not used by this program: tables %1").arg(copy.leftOutTables.join(u", ")));
    }
}

} // namespace

void importFarm(const QString &from, const QString &databasesFolder)
{
    Staging staging(databasesFolder);
    QStringList faults;
    std::vector<FileCopy> copies;
    for (const DatabaseFile file : store::AllDatabaseFiles) {
        copies.push_back(planFile(file, from, faults));
    }
    if (!faults.isEmpty()) {
        throw RunTimeError(ErrorNumber::InvalidArgument,
                           QStringLiteral("The files in %1 cannot be imported: %2.").arg(from, faults.join(u"; ")));
    }
    std::int64_t total = 0;
    for (const FileCopy &copy : copies) {
        for (const TableCopy &table : copy.tables) {
            total += table.source.rowCount;
        }
    }
    {
        Progress progress(QStringLiteral("Importing"), total);
        for (const FileCopy &copy : copies) {
            copyFile(copy, staging.path(copy.file), progress);
        }
    }
    staging.moveIn();
    for (const FileCopy &copy : copies) {
        report(copy);
    }
    printLine(QStringLiteral("%1 rows imported.").arg(total));
}
