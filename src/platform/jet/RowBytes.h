// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"

namespace jet
{

/// One row: its count of columns, the fixed columns, the variable columns with their table of ends (read backwards), the null
/// mask. A row that is older than a column is short of it.
class RowBytes
{
public:
    explicit RowBytes(Bytes bytes);

    /// The bit of the null mask: the value of a Boolean; of any other column whether it holds anything. False for a column that
    /// was added after the row was written. Numbers count deleted columns too.
    bool bit(std::size_t columnNumber) const
    {
        return columnNumber < columnCount_ && ((mask_.byteAt(columnNumber / 8) >> (columnNumber % 8)) & 1) != 0;
    }
    /// Of a column whose bit is set.
    Bytes fixed(std::size_t offset, std::size_t length) const { return body_.part(2 + offset, length); }
    /// Of a column whose bit is set; `index` is its index among the variable columns, deleted ones counted.
    Bytes variable(std::size_t index) const;

private:
    std::size_t columnCount_ = 0;
    /// Everything before the null mask.
    Bytes body_;
    Bytes mask_;
};

} // namespace jet
