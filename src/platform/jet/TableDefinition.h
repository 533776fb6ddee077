// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Value.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace jet
{

class Pager;

/// The numbers are the file's; a number that is not listed is a type that this module does not know.
enum class ColumnType : std::uint8_t {
    Boolean = 1,
    Byte = 2,
    Integer = 3,
    Long = 4,
    Currency = 5,
    Single = 6,
    Double = 7,
    Date = 8,
    Binary = 9,
    Text = 10,
    Ole = 11,
    Memo = 12,
    Guid = 15,
    Numeric = 16,
};

struct ColumnDefinition {
    QString name;
    ColumnType type = ColumnType::Long;
    /// Bit of the null mask; deleted columns are counted.
    std::uint16_t number = 0;
    bool isFixed = false;
    /// Of a fixed column: where it begins behind the count of columns.
    std::uint16_t fixedOffset = 0;
    /// Of a variable column: its index among them, deleted ones counted.
    std::uint16_t variableIndex = 0;
    /// Bytes at most; 0 for Boolean, Memo and OLE.
    std::uint16_t length = 0;
    bool isAutoNumber = false;
    /// Text and Memo: values are stored compressed where that is shorter.
    bool isCompressed = false;
    /// Text and Memo; nothing where the file does not say.
    std::optional<bool> allowsZeroLength;
    /// Text and Memo: locale, 0x0409 for the general order, and in the highest byte its version.
    std::uint32_t sortOrder = 0;
    /// As the file has them; among them what is said apart here.
    std::uint8_t flags = 0;
    /// Numeric alone: digits in all, and behind the point.
    std::uint8_t precision = 0;
    std::uint8_t scale = 0;

    /// Characters at most, for Text.
    int characters() const { return length / 2; }
};

struct IndexColumn {
    /// Index in TableDefinition::columns.
    std::size_t column = 0;
    bool isAscending = true;
};

/// A tree of keys. Two names may share one tree, as an index and a relation on the same columns do; the tree then comes once,
/// under the name of the index.
struct IndexDefinition {
    QString name;
    std::vector<IndexColumn> columns;
    bool isPrimary = false;
    bool isUnique = false;
    /// Rows whose key is null throughout have no entry.
    bool ignoresNulls = false;
    /// No column of the key may be null.
    bool isRequired = false;
    /// It serves a relation to another table alone.
    bool isRelation = false;
    /// Index among the table's trees.
    std::uint32_t number = 0;
    std::uint32_t rootPage = 0;
    RowPosition ownedPages;
    /// Different keys, as the definition counts them.
    std::uint32_t distinctKeys = 0;
};

/// The pages of the long values of a Memo or OLE column.
struct LongValuePages {
    std::uint16_t columnNumber = 0;
    RowPosition ownedPages;
    RowPosition freePages;
};

struct TableDefinition {
    QString name;
    /// First page of the definition, which the pages of rows name as their owner.
    std::uint32_t page = 0;
    /// What the definition itself says.
    std::uint32_t rowCount = 0;
    /// Last number that an autonumber column gave out, 0 for none.
    std::int32_t lastAutoNumber = 0;
    bool isSystem = false;
    /// Columns that a row has when it is new, deleted ones counted.
    std::uint16_t columnCount = 0;
    std::uint16_t variableCount = 0;
    RowPosition ownedPages;
    RowPosition freePages;
    /// In the order of the columns' numbers, which is that of their making.
    std::vector<ColumnDefinition> columns;
    std::vector<IndexDefinition> indexes;
    /// Names of the relations to other tables that the file enforces.
    QStringList relations;
    std::vector<LongValuePages> longValues;
    /// Why the table's properties (AllowZeroLength) cannot be read; empty when they can.
    QString propertiesFault;

    /// By name without regard to case.
    const ColumnDefinition *findColumn(const QString &columnName) const;
    const IndexDefinition *primaryKey() const;
};

/// The definition that begins on a page, gathered from all its pages, as one run of bytes with the first page's header.
QByteArray definitionBytes(const Pager &pager, std::uint32_t firstPage);
/// Reads a definition; its name and its properties are the catalogue's.
TableDefinition readDefinition(const Pager &pager, std::uint32_t firstPage);

} // namespace jet
