// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dao/Recordset.h"

#include "platform/basic/Formats.h"
#include "platform/basic/Numbers.h"
#include "platform/dao/Conversion.h"
#include "platform/dao/RecordsetState.h"

#include <algorithm>
#include <utility>

namespace dao
{

using basic::ErrorNumber;
using basic::RunTimeError;

namespace
{

[[noreturn]] void failNoRecord()
{
    throw DataError(DataErrorNumber::NoCurrentRecord, QStringLiteral("No current record."));
}

QString shown(const Value &value)
{
    constexpr int MaxShown = 40;
    const auto *text = std::get_if<QString>(&value);
    return text != nullptr ? QStringLiteral("the text \"%1\"").arg(text->left(MaxShown)) : QStringLiteral("another type");
}

} // namespace

Recordset::Recordset(std::unique_ptr<State> state) : state_(std::move(state)) {}
Recordset::Recordset(Recordset &&) noexcept = default;
Recordset &Recordset::operator=(Recordset &&) noexcept = default;
Recordset::~Recordset() = default;

bool Recordset::Bof() const
{
    return state_->position < 0 || state_->rows.count() == 0;
}

bool Recordset::Eof() const
{
    return state_->position >= state_->rows.count();
}

int Recordset::RecordCount() const
{
    return state_->rows.count() - state_->removedCount;
}

void Recordset::MoveFirst()
{
    requireRows();
    state_->moveToEdge(-1);
    state_->moveBy(1);
}

void Recordset::MoveLast()
{
    requireRows();
    state_->moveToEdge(state_->rows.count());
    state_->moveBy(-1);
}

void Recordset::MovePrevious()
{
    if (Bof()) {
        failNoRecord();
    }
    state_->moveBy(-1);
}

void Recordset::MoveNext()
{
    if (Eof()) {
        failNoRecord();
    }
    state_->moveBy(1);
}

void Recordset::requireRows() const
{
    if (RecordCount() == 0) {
        failNoRecord();
    }
}

void Recordset::Close()
{
    state_->dropEdit();
    state_->rows.clear();
    state_->removedCount = 0;
    state_->position = 0;
}

void Recordset::AddNew()
{
    TableInfo &table = state_->requireTable();
    state_->dropEdit();
    state_->pending.assign(table.fields.size(), std::nullopt);
    if (table.hasAutonumber()) {
        state_->pending[static_cast<std::size_t>(table.keyField)] = state_->engine->nextKey(table);
    }
    state_->editing = State::Editing::Adding;
}

void Recordset::Edit()
{
    const TableInfo &table = state_->requireTable();
    state_->requireRow();
    state_->refresh(true);
    state_->pending.assign(table.fields.size(), std::nullopt);
    state_->editing = State::Editing::Editing;
}

void Recordset::Update()
{
    if (state_->editing == State::Editing::None) {
        throw DataError(DataErrorNumber::UpdateWithoutEdit, QStringLiteral("Update without AddNew or Edit."));
    }
    if (state_->editing == State::Editing::Adding) {
        state_->insertRow();
    } else {
        state_->updateRow();
    }
    state_->dropEdit();
}

void Recordset::CancelUpdate()
{
    state_->dropEdit();
}

void Recordset::Delete()
{
    state_->removeRow();
    state_->dropEdit();
}

int Recordset::fieldCount() const
{
    return static_cast<int>(state_->query->translation.columns.size());
}

int Recordset::fieldIndex(QAnyStringView name) const
{
    const int index = state_->query->findColumn(name);
    if (index < 0) {
        throw DataError(DataErrorNumber::ItemNotFound,
                        QStringLiteral("The query gives no field %1 (item not found).").arg(name.toString()));
    }
    return index;
}

bool Recordset::hasField(QAnyStringView name) const
{
    return state_->query->findColumn(name) >= 0;
}

QString Recordset::fieldName(int index) const
{
    return columnAt(index).name;
}

const ResultColumn &Recordset::columnAt(int index) const
{
    if (index < 0 || index >= fieldCount()) {
        throw DataError(DataErrorNumber::ItemNotFound,
                        QStringLiteral("The query gives no field number %1 (item not found).").arg(index));
    }
    return state_->query->translation.columns[static_cast<std::size_t>(index)];
}

Value Recordset::value(int index) const
{
    const ResultColumn &column = columnAt(index);
    if (state_->editing != State::Editing::None) {
        const auto &set = state_->pending[static_cast<std::size_t>(column.field)];
        if (set || state_->editing == State::Editing::Adding) {
            return set ? *set : column.type == FieldType::Boolean ? Value(false) : Value(Null{});
        }
    }
    state_->requireRow();
    state_->refresh(false);
    return state_->rows.decode(state_->rows.cell(state_->position, index), column.type);
}

bool Recordset::isNull(int index) const
{
    return std::holds_alternative<Null>(value(index));
}

void Recordset::failType(int index, const Value &held, const char *expected) const
{
    const ResultColumn &column = columnAt(index);
    const auto &table = state_->query->translation.table;
    const QString row =
        table && state_->isOnRow() ? QStringLiteral(", row %1").arg(state_->rows.key(state_->position)) : QString();
    throw RunTimeError(ErrorNumber::TypeMismatch,
                       QStringLiteral("Type mismatch in %1, table %2%3: the field %4 holds %5 where %6 is expected.")
                           .arg(state_->engine->path(), table ? table->name : column.table, row, column.name, shown(held),
                                QLatin1String(expected)));
}

QString Recordset::text(int index) const
{
    struct Reader {
        const Recordset &set;
        int index;
        std::optional<FieldType> type;
        QString operator()(Null) const { return {}; }
        QString operator()(bool flag) const { return basic::booleanText(flag); }
        QString operator()(std::int32_t number) const { return QString::number(number); }
        QString operator()(double number) const
        {
            return type == FieldType::Single ? basic::singleText(static_cast<float>(number)) : basic::doubleText(number);
        }
        QString operator()(QString &text) const { return std::move(text); }
        QString operator()(basic::SerialDate date) const { set.failType(index, date, "a text"); }
    };
    Value held = value(index);
    return std::visit(Reader{*this, index, columnAt(index).type}, held);
}

double Recordset::number(int index) const
{
    struct Reader {
        const Recordset &set;
        int index;
        double operator()(Null) const { return 0.0; }
        double operator()(bool flag) const { return flag ? -1.0 : 0.0; }
        double operator()(std::int32_t number) const { return number; }
        double operator()(double number) const { return number; }
        double operator()(const QString &text) const { set.failType(index, text, "a number"); }
        double operator()(basic::SerialDate date) const { set.failType(index, date, "a number"); }
    };
    return std::visit(Reader{*this, index}, value(index));
}

std::int32_t Recordset::longValue(int index) const
{
    return basic::toLong32(number(index));
}

bool Recordset::boolean(int index) const
{
    return number(index) != 0.0;
}

std::optional<basic::SerialDate> Recordset::date(int index) const
{
    const Value held = value(index);
    if (std::holds_alternative<Null>(held)) {
        return std::nullopt;
    }
    if (const auto *date = std::get_if<basic::SerialDate>(&held)) {
        return *date;
    }
    failType(index, held, "a date");
}

void Recordset::set(int index, const Value &newValue)
{
    const ResultColumn &column = columnAt(index);
    if (state_->editing == State::Editing::None) {
        throw DataError(DataErrorNumber::UpdateWithoutEdit, QStringLiteral("A field is set without AddNew or Edit."));
    }
    // A set that is being edited reads one table.
    const TableInfo &table = *state_->query->translation.table;
    const auto field = static_cast<std::size_t>(column.field);
    if (column.field == table.keyField && table.hasAutonumber() && state_->editing == State::Editing::Editing) {
        throw DataError(DataErrorNumber::ReadOnly, QStringLiteral("The autonumber %1 cannot be changed.").arg(column.name));
    }
    state_->pending[field] = convertedFor(table.fields[field], newValue);
}

} // namespace dao
