// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Workspace.h"

#include <QString>

#include <vector>

/// Every table and field that this program touches, as data: names, types and sizes are those of the suite's
/// files.
namespace store
{

enum class DatabaseFile { Main, Pest, Spray };

struct SchemaTable {
    DatabaseFile file = DatabaseFile::Main;
    QString name;
    /// In the order of the file.
    std::vector<dao::Field> fields;
    /// Name of the key field, which is the primary key; empty for a table without one.
    QString key;
    /// What the queries look rows up by, besides the key.
    std::vector<std::vector<QString>> indexes;
    /// The program adds it by itself to a file that lacks it.
    bool optional = false;

    bool hasAutonumber() const;
    dao::TableDef definition() const;
};

/// In the order in which the files name them: main, pest, spray.
const std::vector<SchemaTable> &schema();
/// By name without regard to case; nullptr when the program knows no such table.
const SchemaTable *findTable(QStringView name);
/// Whether the program adds the field by itself to a table that lacks it.
bool isOptionalField(const SchemaTable &table, QStringView field);
/// Fields that come as a number, a text or a Boolean: whatever the file holds is right.
bool isOfOpenType(const SchemaTable &table, QStringView field);

inline constexpr DatabaseFile AllDatabaseFiles[] = {DatabaseFile::Main, DatabaseFile::Pest, DatabaseFile::Spray};
/// "ZN4.mdb", "PestMon.mdb", "ZN4_Spray.mdb".
QString fileName(DatabaseFile file);
/// The connect text that carries the password of all three files.
QString connectText();

/// Largest keys of deleted rows of the farm lists, by table: a key is never given twice. Added with the first deletion.
inline const QString LastKeysTable = QStringLiteral("tblListKeys");

/// Makes an empty file with all tables of `file` at `path`, and the two methods in the pest file. Error 75 when `path` exists.
void createDatabaseFile(DatabaseFile file, const QString &path, dao::FileKind kind = dao::FileKind::Sqlite);

} // namespace store
