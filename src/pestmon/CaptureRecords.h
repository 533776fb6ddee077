// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pestmon/CaptureCells.h"
#include "store/clsPestMONNew.h"

class ScreenHost;

namespace pestmon
{

/// The stored findings of the session's instruction and block, as cells. Values are counts or, for other methods than "Count",
/// answers: 1 for Yes. `value` is 1 to 3 as in capture::PestColumn.
class CaptureRecords
{
public:
    using Key = clsPestMONNew::Key;
    using Status = clsPestMONNew::Status;

    explicit CaptureRecords(ScreenHost &host) : host_(host) {}

    bool isCount() const;
    /// The current row of a set of points or totals.
    capture::CellDisplay point(const dao::Recordset &rows, int value) const;
    capture::CellDisplay total(const dao::Recordset &rows, int value) const;
    dao::Recordset totals(Key target) const;

    /// As the file holds them; nothing without a row.
    std::optional<capture::CellDisplay> storedPoint(Key target, std::int16_t pointNumber, int value) const;
    std::optional<capture::CellDisplay> storedTotal(Key target, int value) const;

    Status savePoint(Key key, Key target, std::int16_t pointNumber, int value, std::int16_t content) const;
    /// `key` 0 adds a row and returns its key.
    Status saveTotal(Key &key, Key target, int value, std::int16_t content) const;

private:
    SessionContext &session() const;

    ScreenHost &host_;
};

} // namespace pestmon
