// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

/// A run of bytes of a Jet file, read little-endian. Reading past its end gives nothing, never a crash.
class JetBytes
{
public:
    JetBytes() = default;
    explicit JetBytes(std::span<const unsigned char> bytes) : bytes_(bytes) {}

    std::size_t size() const { return bytes_.size(); }
    std::optional<JetBytes> part(std::size_t offset, std::size_t length) const;
    std::optional<std::uint8_t> byteAt(std::size_t offset) const;
    std::optional<std::uint16_t> shortAt(std::size_t offset) const;
    std::optional<std::uint32_t> longAt(std::size_t offset) const;
    std::optional<std::uint64_t> eightAt(std::size_t offset) const;

    /// Plain UTF-16, or compressed text behind its mark.
    QString text() const;

private:
    std::span<const unsigned char> bytes_;
};

/// Where a field lies in the rows of its table.
struct JetPlace {
    /// Number of the field in the null mask, deleted fields counted.
    std::size_t number = 0;
    bool fixed = false;
    /// Offset behind the row's field count, of a fixed field.
    std::size_t offset = 0;
    std::size_t length = 0;
    /// Place among the variable fields, deleted ones counted.
    std::size_t variable = 0;
};

/// One row: field count, fixed part, variable part with its table of ends, null mask.
class JetRow
{
public:
    /// `hasVariable` tells whether the table has variable fields; without them a row has no table of ends.
    static std::optional<JetRow> open(JetBytes bytes, bool hasVariable);

    /// The null mask's bit: for a Boolean its value, for any other field that there is a value. False for a field that was
    /// added after the row was written.
    bool bit(const JetPlace &place) const;
    /// The bytes of a field whose bit is set; nothing when the row is too short to hold them.
    std::optional<JetBytes> field(const JetPlace &place) const;

private:
    JetBytes bytes_;
    JetBytes mask_;
    std::size_t fieldCount_ = 0;
    std::size_t variableCount_ = 0;
    /// Where the table of ends stops; it is read backwards from here.
    std::size_t endsAt_ = 0;
};
