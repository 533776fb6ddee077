// SPDX-License-Identifier: GPL-3.0-or-later
#include "JetRow.h"

namespace
{

constexpr std::size_t CountSize = 2;

std::uint64_t littleEndian(std::span<const unsigned char> bytes)
{
    std::uint64_t value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        value = (value << 8) | bytes[i];
    }
    return value;
}

/// Text behind the mark: runs of one byte a character and of two, each run ended by a zero byte.
QString compressedText(std::span<const unsigned char> bytes)
{
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size()));
    bool oneByte = true;
    for (std::size_t i = 0; i < bytes.size();) {
        if (bytes[i] == 0) {
            oneByte = !oneByte;
            ++i;
        } else if (oneByte) {
            text.append(QChar(bytes[i++]));
        } else if (i + 1 < bytes.size()) {
            text.append(QChar(static_cast<char16_t>(littleEndian(bytes.subspan(i, 2)))));
            i += 2;
        } else {
            break;
        }
    }
    return text;
}

} // namespace

std::optional<JetBytes> JetBytes::part(std::size_t offset, std::size_t length) const
{
    if (offset > bytes_.size() || length > bytes_.size() - offset) {
        return std::nullopt;
    }
    return JetBytes(bytes_.subspan(offset, length));
}

std::optional<std::uint8_t> JetBytes::byteAt(std::size_t offset) const
{
    const std::optional<JetBytes> bytes = part(offset, 1);
    return bytes ? std::optional(bytes->bytes_[0]) : std::nullopt;
}

std::optional<std::uint16_t> JetBytes::shortAt(std::size_t offset) const
{
    const std::optional<JetBytes> bytes = part(offset, 2);
    return bytes ? std::optional(static_cast<std::uint16_t>(littleEndian(bytes->bytes_))) : std::nullopt;
}

std::optional<std::uint32_t> JetBytes::longAt(std::size_t offset) const
{
    const std::optional<JetBytes> bytes = part(offset, 4);
    return bytes ? std::optional(static_cast<std::uint32_t>(littleEndian(bytes->bytes_))) : std::nullopt;
}

std::optional<std::uint64_t> JetBytes::eightAt(std::size_t offset) const
{
    const std::optional<JetBytes> bytes = part(offset, 8);
    return bytes ? std::optional(littleEndian(bytes->bytes_)) : std::nullopt;
}

QString JetBytes::text() const
{
    constexpr std::uint16_t CompressedMark = 0xFEFF;
    if (shortAt(0) == CompressedMark) {
        return compressedText(bytes_.subspan(2));
    }
    QString text;
    for (std::size_t i = 0; i + 1 < bytes_.size(); i += 2) {
        text.append(QChar(static_cast<char16_t>(littleEndian(bytes_.subspan(i, 2)))));
    }
    return text;
}

std::optional<JetRow> JetRow::open(JetBytes bytes, bool hasVariable)
{
    JetRow row;
    const std::optional<std::uint16_t> fieldCount = bytes.shortAt(0);
    if (!fieldCount) {
        return std::nullopt;
    }
    row.fieldCount_ = *fieldCount;
    const std::size_t maskSize = (row.fieldCount_ + 7) / 8;
    if (bytes.size() < CountSize + maskSize) {
        return std::nullopt;
    }
    row.bytes_ = bytes;
    row.mask_ = *bytes.part(bytes.size() - maskSize, maskSize);
    row.endsAt_ = bytes.size() - maskSize;
    if (hasVariable) {
        if (row.endsAt_ < CountSize + CountSize) {
            return std::nullopt;
        }
        row.endsAt_ -= CountSize;
        row.variableCount_ = *bytes.shortAt(row.endsAt_);
        if ((row.variableCount_ + 1) * 2 > row.endsAt_) {
            return std::nullopt;
        }
    }
    return row;
}

bool JetRow::bit(const JetPlace &place) const
{
    if (place.number >= fieldCount_) {
        return false;
    }
    const std::optional<std::uint8_t> byte = mask_.byteAt(place.number / 8);
    return byte && ((*byte >> (place.number % 8)) & 1) != 0;
}

std::optional<JetBytes> JetRow::field(const JetPlace &place) const
{
    if (place.fixed) {
        return bytes_.part(CountSize + place.offset, place.length);
    }
    if (place.variable >= variableCount_) {
        return std::nullopt;
    }
    // The field ends where the next one begins; the offsets stand in reverse order.
    const std::optional<std::uint16_t> begin = bytes_.shortAt(endsAt_ - 2 * (place.variable + 1));
    const std::optional<std::uint16_t> end = bytes_.shortAt(endsAt_ - 2 * (place.variable + 2));
    if (!begin || !end || *end < *begin) {
        return std::nullopt;
    }
    return bytes_.part(*begin, static_cast<std::size_t>(*end - *begin));
}
