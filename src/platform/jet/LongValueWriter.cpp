// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/LongValueWriter.h"

#include "platform/jet/DataPageEditor.h"
#include "platform/jet/LongValue.h"
#include "platform/jet/Pager.h"
#include "platform/jet/UsageMapEditor.h"

#include <algorithm>

namespace jet
{

namespace
{

constexpr std::uint32_t InRow = 0x80000000;
constexpr std::uint32_t InOnePiece = 0x40000000;
constexpr qsizetype LongestInRow = 64;
/// With the pointer to the next piece, where there is one.
constexpr qsizetype LongestPiece = 4076;
constexpr qsizetype PointerSize = 4;

QByteArray littleEndian(std::uint32_t number)
{
    QByteArray bytes(sizeof number, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray cell(std::uint32_t length, std::uint32_t pointer)
{
    return littleEndian(length) + littleEndian(pointer) + littleEndian(0);
}

std::uint32_t pointerTo(RowPosition position)
{
    return position.page << 8 | position.slot;
}

Bytes viewOf(const QByteArray &bytes)
{
    return {reinterpret_cast<const unsigned char *>(bytes.constData()), static_cast<std::size_t>(bytes.size())};
}

} // namespace

LongValueWriter::LongValueWriter(PageAllocator &allocator, const LongValuePages &pages)
    : allocator_(allocator), space_(allocator, DataPage::LongValueOwner, pages.ownedPages, pages.freePages, [] { return true; })
{
}

QByteArray LongValueWriter::add(const QByteArray &value)
{
    const auto length = static_cast<std::uint32_t>(value.size());
    if (value.size() <= LongestInRow) {
        return cell(length | InRow, 0) + value;
    }
    if (value.size() <= LongestPiece) {
        return cell(length | InOnePiece, pointerTo(space_.add(viewOf(value), SlotFlag::Plain)));
    }
    // From the last piece to the first, each leading to the one behind it.
    constexpr qsizetype Content = LongestPiece - PointerSize;
    std::uint32_t next = 0;
    for (qsizetype begin = (value.size() - 1) / Content * Content; begin >= 0; begin -= Content) {
        next = pointerTo(space_.add(viewOf(littleEndian(next) + value.mid(begin, Content)), SlotFlag::Plain));
    }
    return cell(length, next);
}

void LongValueWriter::remove(Bytes cell)
{
    for (const RowPosition piece :
         longValuePieces(allocator_.pager(), cell, std::size_t{allocator_.pager().pageCount()} * PageSize)) {
        space_.remove(piece);
    }
}

} // namespace jet
