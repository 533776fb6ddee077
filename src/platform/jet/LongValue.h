// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"
#include "platform/jet/Value.h"

#include <QByteArray>

#include <vector>

namespace jet
{

class Pager;

/// The whole of a Memo or OLE value, from what its row holds of it: the value itself behind 12 bytes, or where it is on the
/// pages of long values, in one piece or in a chain of pieces. No two values share their pieces: `budget`, at first the length
/// of the file in bytes, is what the values of a table may still take, so that crossed chains end.
QByteArray readLongValue(const Pager &pager, Bytes cell, std::size_t &budget);
/// Where the pieces of a value are; none for one that is in its row.
std::vector<RowPosition> longValuePieces(const Pager &pager, Bytes cell, std::size_t budget);

} // namespace jet
