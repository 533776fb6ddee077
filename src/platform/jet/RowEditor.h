// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"
#include "platform/jet/TableDefinition.h"

#include <QByteArray>

#include <vector>

namespace jet
{

/// A row taken apart, so that columns can be changed while the bytes of all others, deleted ones among them, stay as they are.
class RowEditor
{
public:
    /// A row of which every column is null.
    explicit RowEditor(const TableDefinition &table);
    /// An existing row. One that is older than a column becomes as long as a new one.
    RowEditor(const TableDefinition &table, Bytes row);

    /// Sets the bit of a Boolean.
    void setFlag(const ColumnDefinition &column, bool flag) { setBit(column.number, flag); }
    void setNull(const ColumnDefinition &column);
    /// The stored bytes of any other column.
    void set(const ColumnDefinition &column, const QByteArray &bytes);
    QByteArray bytes() const;

private:
    void setBit(std::size_t number, bool flag);

    std::size_t columnCount_;
    /// Behind the count of columns.
    QByteArray fixed_;
    bool hasVariable_;
    std::vector<QByteArray> variable_;
    QByteArray mask_;
};

} // namespace jet
