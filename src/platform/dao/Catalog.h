// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Sqlite.h"
#include "platform/dao/TableDef.h"

#include <map>
#include <memory>
#include <vector>

namespace dao
{

/// What is known of one table, and its prepared insert.
struct TableInfo {
    QString name;
    QByteArray quotedName;
    std::vector<Field> fields;
    std::vector<QByteArray> quotedFields;
    std::vector<Index> indexes;
    /// Position of the field that is SQLite's row number, -1 without one.
    int keyField = -1;

    /// Without regard to case; -1 when there is none.
    int findField(QStringView fieldName) const;
    bool hasAutonumber() const { return keyField >= 0 && fields[static_cast<std::size_t>(keyField)].autoIncrement; }

    /// The highest autonumber assigned, and the transaction in which it was last read from the file.
    std::int64_t lastKey = 0;
    std::uint64_t lastKeyEpoch = 0;
    std::unique_ptr<Statement> insert;
};

/// The tables of a file, read when first asked for. The declared types in the file's own schema carry the field types, sizes and
/// AllowZeroLength, so that the file describes itself. Tables of this layer and of SQLite are hidden.
class Catalog
{
public:
    explicit Catalog(Connection &connection) : connection_(connection) {}

    /// nullptr when there is no such table.
    std::shared_ptr<TableInfo> find(QStringView name);
    QStringList tableNames();
    /// To be called after a change to the schema.
    void forget();
    /// Whether a writer on another connection has changed the schema since it was read.
    bool isOutdated();

    /// The statements that make a table and its indexes.
    static std::vector<QByteArray> createStatements(const TableDef &definition);
    static QByteArray indexStatement(const TableDef &definition, const Index &index);
    /// Quoted. Index names are shared by all tables of a file, so the table's name goes in front.
    static QByteArray storedIndexName(const TableDef &definition, const Index &index);
    /// Declaration of one column, as CREATE TABLE and ALTER TABLE take it.
    static QByteArray columnDeclaration(const Field &field);

private:
    using Tables = std::map<QString, std::shared_ptr<TableInfo>>;

    void readNames();
    std::shared_ptr<TableInfo> read(const QString &name);
    void readIndexes(TableInfo &table);

    Connection &connection_;
    /// By name in lower case; a table not read yet is null.
    Tables tables_;
    std::map<QString, QString> storedNames_;
    std::map<QString, std::int64_t> lastKeys_;
    std::int64_t schemaVersion_ = -1;
};

} // namespace dao
