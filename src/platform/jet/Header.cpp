// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/jet/Header.h"

#include "platform/jet/CommitBytes.h"
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
constexpr std::size_t CodePageOffset = 0x3C;
constexpr std::size_t CodingKeyOffset = 0x3E;
constexpr std::size_t PasswordOffset = 0x42;
constexpr std::size_t PasswordSize = 40;
constexpr std::size_t SortOrderOffset = 0x6E;
constexpr std::size_t CreatedOffset = 0x72;
constexpr std::size_t FormatVersionOffset = 0x9C;
constexpr char FormatVersion[] = "4.0";

/// The whole days of the creation date, which mask the password a second time. A date that is none masks with 0.
std::uint32_t passwordMask(double created)
{
    return created > -2e9 && created < 2e9 ? static_cast<std::uint32_t>(static_cast<std::int32_t>(created)) : 0;
}

/// Masks or unmasks, as the mask repeats every four bytes: characters take its low and its high half in turn.
char16_t maskedCharacter(char16_t character, std::uint32_t mask, std::size_t offset)
{
    return static_cast<char16_t>(character ^ static_cast<std::uint16_t>(offset % 4 == 0 ? mask : mask >> 16));
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
        const char16_t character = maskedCharacter(bytes.shortAt(PasswordOffset + i), mask, i);
        if (character == 0) {
            break;
        }
        header.password.append(QChar(character));
    }
    return header;
}

QByteArray newHeader(const QString &password, double created)
{
    QByteArray page(PageSize, '\0');
    const auto put = [&](std::size_t offset, auto number) { qToLittleEndian(number, page.data() + offset); };
    put(0, std::uint32_t{0x100});
    page.replace(NameOffset, sizeof Name, Name, sizeof Name);
    put(VersionOffset, std::uint32_t{VersionJet4});
    // The two maps of free pages and the definitions of the system tables.
    constexpr std::array<std::uint32_t, 6> Roots{0x100, 0x101, 2, 3, 4, 5};
    for (std::size_t i = 0; i < Roots.size(); ++i) {
        put(MaskBegin + 4 * i, Roots[i]);
    }
    put(CodePageOffset, std::uint16_t{1252});
    const std::uint32_t mask = passwordMask(created);
    for (std::size_t i = 0; i < PasswordSize; i += 2) {
        const auto index = static_cast<qsizetype>(i / 2);
        const char16_t character = index < password.size() ? password[index].unicode() : u'\0';
        put(PasswordOffset + i, maskedCharacter(character, mask, i));
    }
    put(SortOrderOffset, std::uint32_t{0x0409});
    put(CreatedOffset, std::bit_cast<std::uint64_t>(created));
    applyRc4(MaskKey,
             std::span(reinterpret_cast<unsigned char *>(page.data()), PageSize).subspan(MaskBegin, MaskEnd - MaskBegin));
    page.replace(FormatVersionOffset, sizeof FormatVersion, FormatVersion, sizeof FormatVersion);
    CommitBytes::setNew(reinterpret_cast<unsigned char *>(page.data()));
    return page;
}

} // namespace jet
