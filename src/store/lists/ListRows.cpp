// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/lists/ListRows.h"

#include "store/SqlText.h"

#include <algorithm>
#include <limits>

namespace lists
{

using dao::FieldType;
using store::sqlText;

namespace
{

QString numberText(std::int32_t number)
{
    return number == 0 ? QString() : QString::number(number);
}

dao::Value textValue(FieldType type, const QString &text)
{
    // An empty text would be a name of no letters, which lists then show.
    if (text.isEmpty()) {
        return dao::Null{};
    }
    return type == FieldType::Text ? dao::Value(text) : dao::Value(text.toInt());
}

dao::Value answerValue(FieldType type, bool answer)
{
    return type == FieldType::Boolean ? dao::Value(answer) : dao::Value(answer ? -1 : 0);
}

dao::Value valueOf(ColumnKind kind, FieldType type, const QString &cell)
{
    switch (kind) {
    case ColumnKind::Points:
    case ColumnKind::Reference:
        return cell.isEmpty() ? dao::Value(dao::Null{}) : dao::Value(cell.toInt());
    case ColumnKind::YesNo:
        return answerValue(type, cell == u"1");
    case ColumnKind::Text:
    case ColumnKind::PestKind:
    case ColumnKind::References:
    case ColumnKind::Parent:
        break;
    }
    return textValue(type, cell);
}

QString cellOf(ColumnKind kind, const dao::Recordset &rows, int field)
{
    switch (kind) {
    case ColumnKind::Points:
        return rows.isNull(field) ? QString() : QString::number(rows.longValue(field));
    case ColumnKind::Reference:
        return numberText(rows.longValue(field));
    case ColumnKind::YesNo:
        return rows.boolean(field) ? QStringLiteral("1") : QStringLiteral("0");
    case ColumnKind::Text:
    case ColumnKind::PestKind:
    case ColumnKind::References:
    case ColumnKind::Parent:
        break;
    }
    return rows.text(field);
}

} // namespace

ListRows::ListRows(const Table &table, const dao::TableDef &definition, const dao::Recordset &rows) : table_(table)
{
    if (!table.key.isEmpty()) {
        key_ = fieldOf(definition, rows, table.key);
    }
    for (const Column &column : table.columns) {
        const bool isOptional = column.field == InactiveNameField && !rows.hasField(column.field);
        fields_.push_back(column.field.isEmpty() || isOptional ? Field() : fieldOf(definition, rows, column.field));
    }
}

ListRows::Field ListRows::fieldOf(const dao::TableDef &definition, const dao::Recordset &rows, const QString &name) const
{
    const dao::Field *field = definition.findField(name);
    return {rows.fieldIndex(name), field ? field->type : FieldType::Text};
}

Record ListRows::read(const dao::Recordset &rows) const
{
    Record record{key_.index < 0 ? 0 : rows.longValue(key_.index), Cells(table_.columns.size())};
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (fields_[i].index >= 0 && table_.list != List::Workers) {
            record.cells[i] = cellOf(table_.columns[i].kind, rows, fields_[i].index);
        }
    }
    if (table_.list == List::Workers) {
        const Field &inactiveName = fields_[static_cast<std::size_t>(table_.activeColumn)];
        const QString nickname = rows.text(fields_[static_cast<std::size_t>(table_.nameColumn)].index);
        const bool isActive = !nickname.isEmpty();
        record.set(table_.nameColumn, isActive || inactiveName.index < 0 ? nickname : rows.text(inactiveName.index));
        record.set(table_.activeColumn, isActive ? QStringLiteral("1") : QStringLiteral("0"));
    }
    return record;
}

void ListRows::write(dao::Recordset &rows, const Record &record) const
{
    if (key_.index >= 0) {
        rows.set(key_.index, record.key);
    }
    if (table_.list == List::Workers) {
        const Field &inactiveName = fields_[static_cast<std::size_t>(table_.activeColumn)];
        const bool isActive = record.cell(table_.activeColumn) == u"1";
        const dao::Value name = textValue(FieldType::Text, record.cell(table_.nameColumn));
        rows.set(fields_[static_cast<std::size_t>(table_.nameColumn)].index, isActive ? name : dao::Value(dao::Null{}));
        if (inactiveName.index >= 0) {
            rows.set(inactiveName.index, isActive ? dao::Value(dao::Null{}) : name);
        }
        return;
    }
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (fields_[i].index >= 0) {
            rows.set(fields_[i].index, valueOf(table_.columns[i].kind, fields_[i].type, record.cells[i]));
        }
    }
}

QHash<std::int32_t, QString> readPestCropTypes(dao::Database &spray, std::int32_t firstPest, std::int32_t lastPest)
{
    QHash<std::int32_t, QList<std::int32_t>> keys;
    dao::Recordset rows = spray.OpenRecordset(
        sqlText(u"Select CrTyID, CTargetID from tblTargetFType where CTargetID >= ", firstPest, u" and CTargetID <= ", lastPest));
    for (; !rows.Eof(); rows.MoveNext()) {
        keys[rows.longValue(1)].append(rows.longValue(0));
    }
    QHash<std::int32_t, QString> joined;
    for (auto pest = keys.constBegin(); pest != keys.constEnd(); ++pest) {
        joined.insert(pest.key(), joinedKeys(pest.value()));
    }
    return joined;
}

void writePestCropTypes(dao::Database &spray, std::int32_t pest, const QString &before, const QString &after)
{
    if (before == after) {
        return;
    }
    const QList<std::int32_t> wanted = splitKeys(after);
    QList<std::int32_t> missing = wanted;
    dao::Recordset rows = spray.OpenRecordset(sqlText(u"Select CrTyID, CTargetID from tblTargetFType where CTargetID = ", pest),
                                              dao::RecordsetType::Dynaset);
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::int32_t type = rows.longValue(0);
        missing.removeAll(type);
        if (!wanted.contains(type)) {
            rows.Delete();
        }
    }
    for (const std::int32_t type : missing) {
        rows.AddNew();
        rows.set(0, type);
        rows.set(1, pest);
        rows.Update();
    }
}

QString joinedKeys(QList<std::int32_t> keys)
{
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    QStringList texts;
    for (const std::int32_t key : keys) {
        texts.append(QString::number(key));
    }
    return texts.join(u';');
}

QList<std::int32_t> splitKeys(const QString &text)
{
    QList<std::int32_t> keys;
    for (const QString &key : text.split(u';', Qt::SkipEmptyParts)) {
        keys.append(key.toInt());
    }
    return keys;
}

QString rowsBetween(const Table &table, std::int32_t first, std::int32_t last)
{
    if (table.key.isEmpty()) {
        return sqlText(u"Select * from ", table.table);
    }
    return sqlText(u"Select * from ", table.table, u" where ", table.key, u" >= ", first, u" and ", table.key, u" <= ", last,
                   u" order by ", table.key);
}

} // namespace lists
