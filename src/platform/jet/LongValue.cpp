// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/LongValue.h"

#include "platform/jet/DataPage.h"
#include "platform/jet/Pager.h"

#include <algorithm>

namespace jet
{

namespace
{

constexpr std::uint32_t InRow = 0x80000000;
constexpr std::uint32_t InOnePiece = 0x40000000;
constexpr std::uint32_t LengthMask = 0x3FFFFFFF;
constexpr std::size_t CellHeader = 12;

Bytes piece(const Pager &pager, std::uint32_t pointer)
{
    const DataPage page(pager.page(pointer >> 8, PageType::Data));
    if (page.owner() != DataPage::LongValueOwner) {
        throw Fault(QStringLiteral("a long value leads to page %1, which holds none").arg(pointer >> 8));
    }
    return page.bytes(pointer & 0xFF);
}

QByteArray copyOf(Bytes bytes)
{
    return {reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

RowPosition positionOf(std::uint32_t pointer)
{
    return {pointer >> 8, static_cast<std::uint8_t>(pointer)};
}

/// Calls `take(position, content)` for each piece of a value that is outside its row.
template <typename Take> void forEachPiece(const Pager &pager, Bytes cell, std::size_t &budget, Take &&take)
{
    const std::uint32_t start = cell.longAt(0);
    const std::size_t length = start & LengthMask;
    if (length > budget) {
        throw Fault(QStringLiteral("the long values of the table are longer than the file"));
    }
    budget -= length;
    std::uint32_t pointer = cell.longAt(4);
    if ((start & InOnePiece) != 0) {
        take(positionOf(pointer), piece(pager, pointer).part(0, length));
        return;
    }
    for (std::size_t rest = length; rest > 0;) {
        const Bytes bytes = piece(pager, pointer);
        const Bytes content = bytes.part(4, std::min(rest, bytes.from(4).size()));
        // A piece without content would let a circle of pointers run for ever.
        if (content.size() == 0) {
            throw Fault(QStringLiteral("a long value ends after %1 of %2 bytes").arg(length - rest).arg(length));
        }
        take(positionOf(pointer), content);
        rest -= content.size();
        pointer = bytes.longAt(0);
    }
}

bool isInRow(Bytes cell)
{
    return (cell.longAt(0) & InRow) != 0;
}

} // namespace

QByteArray readLongValue(const Pager &pager, Bytes cell, std::size_t &budget)
{
    if (isInRow(cell)) {
        return copyOf(cell.part(CellHeader, cell.longAt(0) & LengthMask));
    }
    QByteArray value;
    forEachPiece(pager, cell, budget, [&](RowPosition, Bytes content) { value.append(copyOf(content)); });
    return value;
}

std::vector<RowPosition> longValuePieces(const Pager &pager, Bytes cell, std::size_t budget)
{
    std::vector<RowPosition> pieces;
    if (!isInRow(cell)) {
        forEachPiece(pager, cell, budget, [&](RowPosition position, Bytes) { pieces.push_back(position); });
    }
    return pieces;
}

} // namespace jet
