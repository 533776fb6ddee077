// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Properties.h"

#include "platform/jet/TextCodec.h"

namespace jet
{

namespace
{

constexpr std::uint32_t Magic = 0x0032524D;
constexpr std::uint16_t NamesChunk = 0x80;
constexpr std::uint16_t ColumnChunk = 1;
constexpr std::size_t ChunkHeader = 6;
constexpr std::uint8_t BooleanType = 1;
const QString AllowZeroLength = QStringLiteral("AllowZeroLength");

std::vector<QString> readNames(Bytes bytes)
{
    std::vector<QString> names;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t length = bytes.shortAt(at);
        names.push_back(decodeText(bytes.part(at + 2, length)));
        at += 2 + length;
    }
    return names;
}

/// The name of the column, then entries: length, flag, type, number of the property's name, length of the value, value.
void readColumn(Bytes bytes, const std::vector<QString> &names, QHash<QString, bool> &found)
{
    const std::size_t headLength = bytes.longAt(0);
    const QString column = decodeText(bytes.part(6, bytes.shortAt(4)));
    for (std::size_t at = headLength; at < bytes.size();) {
        const std::size_t length = bytes.shortAt(at);
        if (length < 8) {
            throw Fault(QStringLiteral("an entry of the table's properties has %1 bytes").arg(length));
        }
        const Bytes entry = bytes.part(at, length);
        const std::size_t name = entry.shortAt(4);
        if (name >= names.size()) {
            throw Fault(QStringLiteral("an entry of the table's properties has no name"));
        }
        if (entry.byteAt(3) == BooleanType && names[name] == AllowZeroLength) {
            found.insert(column.toLower(), entry.byteAt(8) != 0);
        }
        at += length;
    }
}

template <typename Number> QByteArray littleEndian(Number number)
{
    QByteArray bytes(sizeof number, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray nameBytes(const QString &name)
{
    const QByteArray text = encodeText(name, false);
    return littleEndian(static_cast<std::uint16_t>(text.size())) + text;
}

QByteArray chunk(std::uint16_t kind, const QByteArray &content)
{
    return littleEndian(static_cast<std::uint32_t>(ChunkHeader + static_cast<std::size_t>(content.size()))) + littleEndian(kind)
        + content;
}

} // namespace

QHash<QString, bool> allowZeroLengthByColumn(Bytes blob)
{
    QHash<QString, bool> found;
    if (blob.size() == 0) {
        return found;
    }
    if (blob.longAt(0) != Magic) {
        throw Fault(QStringLiteral("the table's properties do not begin as such"));
    }
    std::vector<QString> names;
    for (std::size_t at = 4; at < blob.size();) {
        const std::size_t length = blob.longAt(at);
        if (length < ChunkHeader) {
            throw Fault(QStringLiteral("a part of the table's properties has %1 bytes").arg(length));
        }
        const Bytes chunk = blob.part(at, length);
        const Bytes content = chunk.from(ChunkHeader);
        if (chunk.shortAt(4) == NamesChunk) {
            names = readNames(content);
        } else if (chunk.shortAt(4) == ColumnChunk) {
            readColumn(content, names, found);
        }
        at += length;
    }
    return found;
}

QByteArray allowZeroLengthBlob(const std::vector<std::pair<QString, bool>> &columns)
{
    constexpr std::uint16_t EntrySize = 9;
    constexpr std::uint8_t OfDefinition = 1;
    QByteArray blob = littleEndian(Magic) + chunk(NamesChunk, nameBytes(AllowZeroLength));
    for (const auto &[column, isAllowed] : columns) {
        const QByteArray head = nameBytes(column);
        const QByteArray entry = littleEndian(EntrySize) + littleEndian(OfDefinition) + littleEndian(BooleanType)
            + littleEndian(std::uint16_t{0}) + littleEndian(std::uint16_t{1}) + littleEndian(std::uint8_t{isAllowed});
        blob += chunk(ColumnChunk, littleEndian(static_cast<std::uint32_t>(4 + head.size())) + head + entry);
    }
    return blob;
}

} // namespace jet
