// SPDX-License-Identifier: GPL-3.0-or-later
#include "Export.h"

#include "Output.h"
#include "Progress.h"

#include "platform/basic/RunTimeError.h"
#include "platform/basic/TextFiles.h"
#include "platform/dao/CommitScope.h"
#include "store/Staging.h"

#include <QDir>
#include <QLocale>
#include <QSaveFile>

#include <memory>
#include <vector>

using basic::ErrorNumber;
using basic::RunTimeError;

namespace
{

using DatabasePointer = std::unique_ptr<dao::Database>;

DatabasePointer open(const QString &folder, store::DatabaseFile file)
{
    const QString wanted = folder + u'/' + store::fileName(file);
    return dao::Workspace::OpenDatabase(basic::findPath(wanted).value_or(wanted), false, true, store::connectText());
}

QString allRows(const QString &table)
{
    return QStringLiteral("Select * from [%1]").arg(table);
}

void printCount(const QString &table, int rows)
{
    printLine(QStringLiteral("  %1  %2 rows").arg(table, -20).arg(rows));
}

struct CsvText {
    QString operator()(dao::Null) const { return {}; }
    QString operator()(bool flag) const { return flag ? QStringLiteral("True") : QStringLiteral("False"); }
    QString operator()(std::int32_t number) const { return QString::number(number); }
    // The shortest text that reads back as the same number.
    QString operator()(double number) const { return QString::number(number, 'g', QLocale::FloatingPointShortest); }
    QString operator()(basic::SerialDate date) const
    {
        return QDateTime(date.date(), date.time()).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }
    QString operator()(const QString &text) const
    {
        return u'"' + QString(text).replace(QLatin1String("\""), QLatin1String("\"\"")) + u'"';
    }
};

[[noreturn]] void failWrite(const QSaveFile &file)
{
    throw RunTimeError(ErrorNumber::PathFileAccess,
                       QStringLiteral("%1 cannot be written: %2").arg(file.fileName(), file.errorString()));
}

int writeCsv(dao::Database &database, const QString &table, const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        failWrite(file);
    }
    dao::Recordset rows = database.OpenRecordset(allRows(table));
    const int fields = rows.fieldCount();
    const auto writeLine = [&](const auto &cell) {
        QStringList cells;
        for (int field = 0; field < fields; ++field) {
            cells.append(cell(field));
        }
        if (file.write((cells.join(u',') + QStringLiteral("\r\n")).toUtf8()) < 0) {
            failWrite(file);
        }
    };
    writeLine([&](int field) { return CsvText()(rows.fieldName(field)); });
    int count = 0;
    for (; !rows.Eof(); rows.MoveNext(), ++count) {
        writeLine([&](int field) { return std::visit(CsvText(), rows.value(field)); });
    }
    if (!file.commit()) {
        failWrite(file);
    }
    return count;
}

/// The folder for the .csv files; what was written is removed again unless the export was completed.
class CsvFolder
{
public:
    explicit CsvFolder(const QString &path) : folder_(path), wasThere_(folder_.exists())
    {
        if (wasThere_ && !folder_.isEmpty()) {
            throw RunTimeError(ErrorNumber::PathFileAccess,
                               QStringLiteral("The folder %1 holds files already; name a new or an empty one.").arg(path));
        }
        if (!folder_.mkpath(QStringLiteral("."))) {
            throw RunTimeError(ErrorNumber::PathFileAccess, QStringLiteral("The folder %1 cannot be created.").arg(path));
        }
    }
    ~CsvFolder()
    {
        if (isComplete_) {
            return;
        }
        for (const QString &name : written_) {
            folder_.remove(name);
        }
        if (!wasThere_) {
            folder_.rmdir(folder_.absolutePath());
        }
    }
    CsvFolder(const CsvFolder &) = delete;
    CsvFolder &operator=(const CsvFolder &) = delete;

    QString add(const QString &name)
    {
        written_.append(name);
        return folder_.filePath(name);
    }
    void complete() { isComplete_ = true; }

private:
    QDir folder_;
    bool wasThere_;
    QStringList written_;
    bool isComplete_ = false;
};

/// The rows of a table in both files must be the same, in the same order.
void compareTables(dao::Database &source, dao::Database &target, const QString &table, const QStringList &fields)
{
    const QString sql = QStringLiteral("Select %1 from [%2]").arg(fields.join(u", "), table);
    dao::Recordset before = source.OpenRecordset(sql);
    dao::Recordset after = target.OpenRecordset(sql);
    int number = 0;
    for (; !before.Eof() && !after.Eof(); before.MoveNext(), after.MoveNext()) {
        ++number;
        for (int field = 0; field < before.fieldCount(); ++field) {
            if (before.value(field) != after.value(field)) {
                throw RunTimeError(ErrorNumber::DeviceError,
                                   QStringLiteral("Row %1 of %2 was not written as it is in the field %3.")
                                       .arg(number)
                                       .arg(table, before.fieldName(field)));
            }
        }
    }
    if (before.Eof() != after.Eof()) {
        throw RunTimeError(ErrorNumber::DeviceError, QStringLiteral("Not all rows of %1 were written.").arg(table));
    }
}

int copyTable(dao::Database &source, dao::Database &target, const store::SchemaTable &table, Progress &progress)
{
    const dao::TableDef existing = source.tableDef(table.name);
    dao::TableDef definition(table.name);
    QStringList fields;
    for (const dao::Field &wanted : table.fields) {
        if (const dao::Field *found = existing.findField(wanted.name)) {
            dao::Field field = *found;
            field.autoIncrement = wanted.autoIncrement;
            definition.Append(field);
            fields.append(QStringLiteral("[%1]").arg(wanted.name));
        }
    }
    for (const dao::Index &index : existing.Indexes()) {
        if (index.primary) {
            definition.Append(index);
        }
    }
    target.Append(definition);
    dao::Recordset rows = source.OpenRecordset(QStringLiteral("Select %1 from [%2]").arg(fields.join(u", "), table.name));
    dao::Recordset copy = target.OpenRecordset(allRows(table.name), dao::RecordsetType::Dynaset);
    int count = 0;
    for (; !rows.Eof(); rows.MoveNext(), ++count) {
        copy.AddNew();
        for (int field = 0; field < rows.fieldCount(); ++field) {
            copy.set(field, rows.value(field));
        }
        copy.Update();
        progress.advance();
    }
    return count;
}

} // namespace

void exportToCsv(const QString &databasesFolder, const QString &to)
{
    CsvFolder folder(to);
    for (const store::DatabaseFile file : store::AllDatabaseFiles) {
        const DatabasePointer database = open(databasesFolder, file);
        printLine(store::fileName(file));
        for (const QString &table : database->tableNames()) {
            printCount(table, writeCsv(*database, table, folder.add(table + QStringLiteral(".csv"))));
        }
    }
    folder.complete();
    printLine(QStringLiteral("Written to %1.").arg(QDir(to).absolutePath()));
}

void exportToJet(const QString &from, const QString &databasesFolder)
{
    Staging staging(databasesFolder);
    for (const store::DatabaseFile file : store::AllDatabaseFiles) {
        const DatabasePointer source = open(from, file);
        printLine(store::fileName(file));
        const QStringList present = source->tableNames();
        std::vector<const store::SchemaTable *> tables;
        std::int64_t total = 0;
        for (const store::SchemaTable &table : store::schema()) {
            if (table.file == file && present.contains(table.name, Qt::CaseInsensitive)) {
                tables.push_back(&table);
                total += source->OpenRecordset(QStringLiteral("Select Count(*) from [%1]").arg(table.name)).longValue(0);
            }
        }
        const DatabasePointer target =
            dao::Workspace::CreateDatabase(staging.path(file), store::connectText(), dao::FileKind::Jet);
        Progress progress(QStringLiteral("Writing"), total);
        dao::CommitScope scope(*target);
        std::vector<int> counts;
        for (const store::SchemaTable *table : tables) {
            counts.push_back(copyTable(*source, *target, *table, progress));
        }
        scope.commit();
        // What was written is read from the file again, not from the mirror that it was written through.
        const DatabasePointer written = dao::Workspace::OpenDatabase(staging.path(file), false, true, store::connectText());
        for (std::size_t i = 0; i < tables.size(); ++i) {
            const dao::TableDef definition = written->tableDef(tables[i]->name);
            QStringList fields;
            for (const dao::Field &field : definition.Fields()) {
                fields.append(QStringLiteral("[%1]").arg(field.name));
            }
            compareTables(*source, *written, tables[i]->name, fields);
            printCount(tables[i]->name, counts[i]);
        }
    }
    staging.moveIn();
    printLine(QStringLiteral("Written to %1, every row compared.").arg(QDir(databasesFolder).absolutePath()));
}
