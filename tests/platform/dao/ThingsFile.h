// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Workspace.h"

#include <QTemporaryDir>

namespace dao
{

/// Error number that an action raises, 0 when it raises none.
template <typename Action> int errorOf(Action &&action)
{
    try {
        action();
    } catch (const basic::RunTimeError &error) {
        return error.number();
    }
    return 0;
}

/// A file in a folder of its own with a table of every type: Things (ThingID auto, Name Text 10, Code Text 5 not empty, Small
/// Integer, Big Long, Share Single, Precise Double, Day Date, Flag Boolean).
class ThingsFile
{
public:
    ThingsFile()
    {
        database_ = Workspace::CreateDatabase(path(), QStringLiteral(";pwd=secret"), kind());
        TableDef things = database_->CreateTableDef(QStringLiteral("Things"));
        Field key = TableDef::CreateField(QStringLiteral("ThingID"), FieldType::Long);
        key.autoIncrement = true;
        things.Append(key);
        things.Append(TableDef::CreateField(QStringLiteral("Name"), FieldType::Text, 10));
        Field code = TableDef::CreateField(QStringLiteral("Code"), FieldType::Text, 5);
        code.allowZeroLength = false;
        things.Append(code);
        things.Append(TableDef::CreateField(QStringLiteral("Small"), FieldType::Integer));
        things.Append(TableDef::CreateField(QStringLiteral("Big"), FieldType::Long));
        things.Append(TableDef::CreateField(QStringLiteral("Share"), FieldType::Single));
        things.Append(TableDef::CreateField(QStringLiteral("Precise"), FieldType::Double));
        things.Append(TableDef::CreateField(QStringLiteral("Day"), FieldType::Date));
        things.Append(TableDef::CreateField(QStringLiteral("Flag"), FieldType::Boolean));
        things.Append(Index{QStringLiteral("Big"), {QStringLiteral("Big")}, false, false});
        database_->Append(things);
    }

    /// The tests of the object layer run once for each kind.
    static FileKind kind()
    {
        return qEnvironmentVariable("FARM_STORAGE") == QLatin1String("jet") ? FileKind::Jet : FileKind::Sqlite;
    }
    QString path() const { return folder_.filePath(QStringLiteral("Things.mdb")); }
    QString folder() const { return folder_.path(); }
    Database &operator*() { return *database_; }
    Database *operator->() { return database_.get(); }
    void close() { database_.reset(); }
    std::unique_ptr<Database> openAgain(bool readOnly = false) const
    {
        return Workspace::OpenDatabase(path(), false, readOnly, QStringLiteral(";pwd=secret"));
    }

    /// Adds a row and returns its key.
    std::int32_t add(const QString &name, std::int32_t big = 0)
    {
        Recordset set =
            database_->OpenRecordset(QStringLiteral("Select * from Things where ThingID = 0"), RecordsetType::Dynaset);
        set.AddNew();
        const std::int32_t key = set.longValue("ThingID");
        set.set("Name", name);
        set.set("Big", big);
        set.Update();
        return key;
    }

private:
    QTemporaryDir folder_;
    std::unique_ptr<Database> database_;
};

} // namespace dao
