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

} // namespace

QByteArray readLongValue(const Pager &pager, Bytes cell, std::size_t &budget)
{
    const std::uint32_t start = cell.longAt(0);
    const std::size_t length = start & LengthMask;
    if ((start & InRow) != 0) {
        return copyOf(cell.part(CellHeader, length));
    }
    if (length > budget) {
        throw Fault(QStringLiteral("the long values of the table are longer than the file"));
    }
    budget -= length;
    std::uint32_t pointer = cell.longAt(4);
    if ((start & InOnePiece) != 0) {
        return copyOf(piece(pager, pointer).part(0, length));
    }
    QByteArray value;
    value.reserve(static_cast<qsizetype>(length));
    while (static_cast<std::size_t>(value.size()) < length) {
        const Bytes bytes = piece(pager, pointer);
        const std::size_t rest = length - static_cast<std::size_t>(value.size());
        const Bytes content = bytes.part(4, std::min(rest, bytes.from(4).size()));
        // A piece without content would let a circle of pointers run for ever.
        if (content.size() == 0) {
            throw Fault(QStringLiteral("a long value ends after %1 of %2 bytes").arg(value.size()).arg(length));
        }
        value.append(copyOf(content));
        pointer = bytes.longAt(0);
    }
    return value;
}

} // namespace jet
