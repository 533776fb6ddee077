// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Catalog.h"

#include "platform/dao/Collation.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>

namespace dao
{

namespace
{

struct DeclaredType {
    FieldType type;
    QLatin1String text;
};
// SQLite derives the storage class from the words inside: INT, TEXT, REAL.
constexpr std::array DeclaredTypes{
    DeclaredType{FieldType::Boolean, QLatin1String("BOOLEAN INTEGER")},
    DeclaredType{FieldType::Integer, QLatin1String("SMALLINT")},
    DeclaredType{FieldType::Long, QLatin1String("INTEGER")},
    DeclaredType{FieldType::Single, QLatin1String("SINGLE REAL")},
    DeclaredType{FieldType::Double, QLatin1String("DOUBLE REAL")},
    DeclaredType{FieldType::Date, QLatin1String("DATE REAL")},
    DeclaredType{FieldType::Text, QLatin1String("TEXT")},
};
const QString NonEmptyText = QStringLiteral("NONEMPTY TEXT");
const QString PrimaryIndexName = QStringLiteral("PrimaryKey");
constexpr int MaxText = 255;

Field fieldFromDeclaration(const QString &name, const QString &declared)
{
    Field field;
    field.name = name;
    const qsizetype bracket = declared.indexOf(u'(');
    const QString words = (bracket < 0 ? declared : declared.left(bracket)).trimmed().toUpper();
    field.allowZeroLength = words != NonEmptyText;
    const QString plain = field.allowZeroLength ? words : QString(DeclaredTypes.back().text);
    const auto found =
        std::find_if(DeclaredTypes.begin(), DeclaredTypes.end(), [&](const DeclaredType &type) { return type.text == plain; });
    // A column that another program added: whatever is not declared as a number is text.
    const bool isNumber = words.contains(QLatin1String("INT")) || words.contains(QLatin1String("REAL"));
    field.type = found != DeclaredTypes.end() ? found->type : isNumber ? FieldType::Double : FieldType::Text;
    if (field.type == FieldType::Text) {
        const int size = bracket < 0 ? 0 : declared.mid(bracket + 1, declared.indexOf(u')') - bracket - 1).toInt();
        field.size = size > 0 ? size : MaxText;
    }
    return field;
}

/// The field that becomes SQLite's row number: an autonumber, or a single Long primary key.
int keyFieldOf(const TableDef &definition)
{
    const auto &fields = definition.Fields();
    const auto automatic = std::find_if(fields.begin(), fields.end(), [](const Field &field) { return field.autoIncrement; });
    if (automatic != fields.end()) {
        return static_cast<int>(automatic - fields.begin());
    }
    for (const Index &index : definition.Indexes()) {
        const Field *field = index.primary && index.fields.size() == 1 ? definition.findField(index.fields.front()) : nullptr;
        if (field != nullptr && field->type == FieldType::Long) {
            return static_cast<int>(field - fields.data());
        }
    }
    return -1;
}

QByteArray fieldList(const TableDef &definition, const Index &index)
{
    QByteArray list;
    for (const QString &name : index.fields) {
        const Field *field = definition.findField(name);
        if (field == nullptr) {
            throw DataError(DataErrorNumber::ItemNotFound,
                            QStringLiteral("The index %1 of %2 names a field %3 that does not exist.")
                                .arg(index.name, definition.Name(), name));
        }
        list += (list.isEmpty() ? "" : ", ") + quoteName(field->name);
    }
    return list;
}

bool isKeyIndex(const TableDef &definition, const Index &index, int keyField)
{
    return keyField >= 0 && index.fields.size() == 1
        && definition.findField(index.fields.front()) == &definition.Fields()[static_cast<std::size_t>(keyField)];
}

bool isHidden(const QString &name)
{
    return name.startsWith(QLatin1String("sqlite_")) || name.startsWith(QLatin1String("dao_"));
}

} // namespace

int TableInfo::findField(QStringView fieldName) const
{
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const Field &field) {
        return field.name.size() == fieldName.size() && fieldName.compare(field.name, Qt::CaseInsensitive) == 0;
    });
    return found == fields.end() ? -1 : static_cast<int>(found - fields.begin());
}

QByteArray Catalog::columnDeclaration(const Field &field)
{
    if (field.autoIncrement) {
        return quoteName(field.name) + " INTEGER PRIMARY KEY AUTOINCREMENT";
    }
    const auto found = std::find_if(DeclaredTypes.begin(), DeclaredTypes.end(),
                                    [&](const DeclaredType &type) { return type.type == field.type; });
    QString type = found->text;
    if (field.type == FieldType::Text) {
        type = QStringLiteral("%1(%2) COLLATE %3")
                   .arg(field.allowZeroLength ? type : NonEmptyText)
                   .arg(field.size > 0 ? field.size : MaxText)
                   .arg(QLatin1String(CollationName));
    } else if (field.type == FieldType::Boolean) {
        type += QLatin1String(" DEFAULT 0");
    }
    return quoteName(field.name) + ' ' + type.toUtf8();
}

QByteArray Catalog::storedIndexName(const TableDef &definition, const Index &index)
{
    return quoteName(definition.Name() + u'_' + index.name);
}

QByteArray Catalog::indexStatement(const TableDef &definition, const Index &index)
{
    return (index.unique || index.primary ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") + storedIndexName(definition, index)
        + " ON " + quoteName(definition.Name()) + " (" + fieldList(definition, index) + ')';
}

std::vector<QByteArray> Catalog::createStatements(const TableDef &definition)
{
    const int keyField = keyFieldOf(definition);
    QByteArray columns;
    for (std::size_t i = 0; i < definition.Fields().size(); ++i) {
        const Field &field = definition.Fields()[i];
        const bool isPlainKey = static_cast<int>(i) == keyField && !field.autoIncrement;
        columns += (i == 0 ? "" : ", ") + columnDeclaration(field) + (isPlainKey ? " PRIMARY KEY" : "");
    }
    std::vector<QByteArray> indexes;
    for (const Index &index : definition.Indexes()) {
        if (isKeyIndex(definition, index, keyField)) {
            continue;
        }
        if (index.primary && keyField < 0) {
            columns += ", PRIMARY KEY (" + fieldList(definition, index) + ')';
            continue;
        }
        indexes.push_back(indexStatement(definition, index));
    }
    std::vector<QByteArray> statements{"CREATE TABLE " + quoteName(definition.Name()) + " (" + columns + ')'};
    statements.insert(statements.end(), indexes.begin(), indexes.end());
    return statements;
}

std::shared_ptr<TableInfo> Catalog::find(QStringView name)
{
    readNames();
    const QString folded = name.toString().toLower();
    const auto found = tables_.find(folded);
    if (found == tables_.end()) {
        return nullptr;
    }
    if (!found->second) {
        found->second = read(storedNames_[folded]);
    }
    return found->second;
}

QStringList Catalog::tableNames()
{
    readNames();
    QStringList names;
    for (const auto &[folded, stored] : storedNames_) {
        names.push_back(stored);
    }
    return names;
}

void Catalog::forget()
{
    // Numbers given out in this session are remembered, so that none is given twice.
    for (const auto &[folded, table] : tables_) {
        if (table) {
            lastKeys_[folded] = table->lastKey;
        }
    }
    tables_.clear();
    storedNames_.clear();
    schemaVersion_ = -1;
}

bool Catalog::isOutdated()
{
    return schemaVersion_ >= 0 && connection_.number("PRAGMA schema_version") != schemaVersion_;
}

void Catalog::readNames()
{
    if (schemaVersion_ >= 0) {
        return;
    }
    schemaVersion_ = connection_.number("PRAGMA schema_version");
    Statement statement(connection_, "SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY rowid");
    while (statement.step()) {
        const auto text = statement.textAt(0);
        const QString name = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
        if (!isHidden(name)) {
            tables_.emplace(name.toLower(), nullptr);
            storedNames_.emplace(name.toLower(), name);
        }
    }
}

std::shared_ptr<TableInfo> Catalog::read(const QString &name)
{
    auto table = std::make_shared<TableInfo>();
    table->name = name;
    table->quotedName = quoteName(name);
    table->lastKey = lastKeys_[name.toLower()];
    Statement columns(connection_, "SELECT name, type, pk FROM pragma_table_info(?1) ORDER BY cid");
    columns.bind(1, name);
    int keyColumns = 0;
    while (columns.step()) {
        const auto fieldName = columns.textAt(0);
        const auto declared = columns.textAt(1);
        Field field = fieldFromDeclaration(QString::fromUtf8(fieldName.data(), static_cast<qsizetype>(fieldName.size())),
                                           QString::fromUtf8(declared.data(), static_cast<qsizetype>(declared.size())));
        if (columns.integerAt(2) > 0) {
            ++keyColumns;
            if (field.type == FieldType::Long) {
                table->keyField = static_cast<int>(table->fields.size());
            }
        }
        table->quotedFields.push_back(quoteName(field.name));
        table->fields.push_back(std::move(field));
    }
    if (keyColumns != 1) {
        table->keyField = -1;
    }
    if (table->keyField >= 0) {
        Field &key = table->fields[static_cast<std::size_t>(table->keyField)];
        int automatic = 0;
        sqlite3_table_column_metadata(connection_.get(), "main", name.toUtf8().constData(), key.name.toUtf8().constData(),
                                      nullptr, nullptr, nullptr, nullptr, &automatic);
        key.autoIncrement = automatic != 0;
        table->indexes.push_back({PrimaryIndexName, {key.name}, true, true});
    }
    readIndexes(*table);
    return table;
}

void Catalog::readIndexes(TableInfo &table)
{
    Statement statement(
        connection_,
        "SELECT l.name, l.\"unique\", l.origin, i.name FROM pragma_index_list(?1) AS l, pragma_index_info(l.name) AS i"
        " ORDER BY l.seq DESC, i.seqno");
    statement.bind(1, table.name);
    QString current;
    while (statement.step()) {
        const auto text = [&statement](int column) {
            const auto bytes = statement.textAt(column);
            return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
        };
        const QString stored = text(0);
        if (stored != current) {
            current = stored;
            const bool primary = text(2) == QLatin1String("pk");
            const QString prefix = table.name + u'_';
            QString name = stored.startsWith(prefix, Qt::CaseInsensitive) ? stored.mid(prefix.size()) : stored;
            table.indexes.push_back({primary ? PrimaryIndexName : std::move(name), {}, primary, statement.integerAt(1) != 0});
        }
        table.indexes.back().fields.push_back(text(3));
    }
}

} // namespace dao
