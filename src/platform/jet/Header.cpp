// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Header.h"

#include "platform/jet/Rc4.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace jet
{

namespace
{

constexpr std::size_t NameOffset = 4;
constexpr char Name[] = "Standard Jet DB";
constexpr std::size_t VersionOffset = 0x14;
constexpr std::uint8_t VersionJet4 = 1;

constexpr std::size_t MaskBegin = 0x18;
constexpr std::size_t MaskEnd = 0x98;
constexpr std::array<unsigned char, 4> MaskKey{0xC7, 0xDA, 0x39, 0x6B};
constexpr std::size_t CodingKeyOffset = 0x3E;
constexpr std::size_t PasswordOffset = 0x42;
constexpr std::size_t PasswordSize = 40;
constexpr std::size_t SortOrderOffset = 0x6E;
constexpr std::size_t CreatedOffset = 0x72;

/// The whole days of the creation date, which mask the password a second time. A date that is none masks with 0.
std::uint32_t passwordMask(double created)
{
    return created > -2e9 && created < 2e9 ? static_cast<std::uint32_t>(static_cast<std::int32_t>(created)) : 0;
}

} // namespace

FileKind fileKind(Bytes start)
{
    if (start.size() <= VersionOffset || std::memcmp(start.data() + NameOffset, Name, sizeof Name) != 0) {
        return FileKind::Other;
    }
    const std::uint8_t version = start.byteAt(VersionOffset);
    return version == VersionJet4 ? FileKind::Jet4 : version < VersionJet4 ? FileKind::TooOld : FileKind::TooNew;
}

Header readHeader(Bytes page)
{
    std::array<unsigned char, MaskEnd> plain;
    const Bytes masked = page.part(0, MaskEnd);
    std::copy_n(masked.data(), MaskEnd, plain.begin());
    applyRc4(MaskKey, std::span(plain).subspan(MaskBegin));
    const Bytes bytes(plain.data(), plain.size());

    Header header;
    header.codingKey = bytes.longAt(CodingKeyOffset);
    header.sortOrder = bytes.longAt(SortOrderOffset);
    header.created = std::bit_cast<double>(bytes.eightAt(CreatedOffset));
    const std::uint32_t mask = passwordMask(header.created);
    for (std::size_t i = 0; i < PasswordSize; i += 2) {
        // The mask repeats every four bytes, so characters take its low and its high half in turn.
        const auto character =
            static_cast<char16_t>(bytes.shortAt(PasswordOffset + i) ^ static_cast<std::uint16_t>(i % 4 == 0 ? mask : mask >> 16));
        if (character == 0) {
            break;
        }
        header.password.append(QChar(character));
    }
    return header;
}

} // namespace jet
