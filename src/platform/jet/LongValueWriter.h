// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/RowSpace.h"
#include "platform/jet/TableDefinition.h"

#include <QByteArray>

namespace jet
{

/// Stores and frees the values of one Memo or OLE column.
class LongValueWriter
{
public:
    LongValueWriter(PageAllocator &allocator, const LongValuePages &pages);

    /// What the row holds of the value.
    QByteArray add(const QByteArray &value);
    /// Frees the pieces of the value in a cell.
    void remove(Bytes cell);

private:
    PageAllocator &allocator_;
    RowSpace space_;
};

} // namespace jet
