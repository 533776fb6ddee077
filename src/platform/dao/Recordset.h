// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dao/Value.h"

#include <QAnyStringView>
#include <QString>

#include <memory>
#include <optional>

namespace dao
{

enum class RecordsetType { Snapshot, Dynaset };

struct ResultColumn;

/// Rows of a query, with a current row. Rows are numbered by position only; the set opens on its first row.
///
/// A snapshot holds the rows as they were when it was opened and refuses AddNew, Edit and Delete (3027).
/// A dynaset holds the keys of the rows found when it was opened; a row is read again when this connection has written since,
/// and by Edit always. It can write when the query reads plain fields of one table. Reading or editing a row that has been
/// deleted meanwhile raises 3167. Rows added are not part of the set until it is opened anew.
/// Rows that ORDER BY leaves equal, or that have none, come in the order of their keys.
///
/// Fields are named without regard to case, as the query names them (alias or field name). Where two tables of a join give
/// the same name, the plain name means the first and "table.field" distinguishes them. An unknown name raises 3265.
/// Whatever needs a current row raises 3021 without one.
class Recordset
{
public:
    struct State;
    explicit Recordset(std::unique_ptr<State> state);
    Recordset(Recordset &&) noexcept;
    Recordset &operator=(Recordset &&) noexcept;
    ~Recordset();

    bool Bof() const;
    /// True after the last row, and for an empty set. (The layer's own name is a macro of the C library.)
    bool Eof() const;
    /// Rows in the set, whether visited or not, without those deleted through it.
    int RecordCount() const;
    /// 3021 for a set without rows, as MoveLast.
    void MoveFirst();
    void MoveLast();
    void MovePrevious();
    /// Past the last row Eof becomes true; a further move raises 3021.
    void MoveNext();
    /// Releases the rows; afterwards the set is empty.
    void Close();

    /// Starts a new row. The autonumber has its value at once and retains it if Update follows; a row that comes from another
    /// file may set it.
    void AddNew();
    void Edit();
    /// Writes the fields set since AddNew or Edit (after Edit only those that differ from what is stored); durable when it
    /// returns, unless a CommitScope is open. After AddNew the current row is the one that was current before. 3020 without
    /// AddNew or Edit. On failure nothing is written and the row stays in editing.
    void Update();
    void CancelUpdate();
    /// Deletes the current row; until a move, reading it raises 3167.
    void Delete();

    int fieldCount() const;
    /// Position of a field, from 0; 3265 when there is none. Positions stay valid while the set is open.
    int fieldIndex(QAnyStringView name) const;
    bool hasField(QAnyStringView name) const;
    QString fieldName(int index) const;

    /// The value in the current row, or in the row being added or edited.
    Value value(int index) const;
    Value value(QAnyStringView name) const { return value(fieldIndex(name)); }
    bool isNull(int index) const;
    bool isNull(QAnyStringView name) const { return isNull(fieldIndex(name)); }

    /// Null reads as empty text, 0, 0.0 and False; a Boolean read as a number is -1 or 0, a number read as a Boolean is
    /// false for 0 only. Other types raise 13, so a date has no text of its own. text() of a number is its plain text, of a
    /// Single its shortest, of a Boolean True or False.
    QString text(int index) const;
    QString text(QAnyStringView name) const { return text(fieldIndex(name)); }
    std::int32_t longValue(int index) const;
    std::int32_t longValue(QAnyStringView name) const { return longValue(fieldIndex(name)); }
    double number(int index) const;
    double number(QAnyStringView name) const { return number(fieldIndex(name)); }
    bool boolean(int index) const;
    bool boolean(QAnyStringView name) const { return boolean(fieldIndex(name)); }
    /// Nothing for null; the zero date is given as it is.
    std::optional<basic::SerialDate> date(int index) const;
    std::optional<basic::SerialDate> date(QAnyStringView name) const { return date(fieldIndex(name)); }

    /// Sets a field of the row being added or edited. Checks type, size and range: 3163 text too long, 3315 zero-length text
    /// not allowed, 6 a number beyond the field's range, 3421 a value of another kind.
    void set(int index, const Value &value);
    void set(QAnyStringView name, const Value &newValue) { set(fieldIndex(name), newValue); }

private:
    void requireRows() const;
    const ResultColumn &columnAt(int index) const;
    /// 13, naming file, table, row and field.
    [[noreturn]] void failType(int index, const Value &held, const char *expected) const;

    std::unique_ptr<State> state_;
};

} // namespace dao
