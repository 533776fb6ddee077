// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace jet
{

/// Where the parts of a definition are, counted from the first page's beginning; further pages follow without their headers.
namespace DefinitionLayout
{
constexpr std::size_t PageHeader = 8;
constexpr std::size_t FreeBytesOffset = 2;
constexpr std::size_t NextPageOffset = 4;
constexpr std::size_t LengthOffset = 8;
constexpr std::size_t RowCountOffset = 16;
constexpr std::size_t AutoNumberOffset = 20;
constexpr std::size_t TableTypeOffset = 40;
constexpr std::size_t ColumnCountOffset = 41;
constexpr std::size_t VariableCountOffset = 43;
constexpr std::size_t ColumnsOffset = 45;
constexpr std::size_t IndexNamesOffset = 47;
constexpr std::size_t IndexesOffset = 51;
constexpr std::size_t OwnedPagesOffset = 55;
constexpr std::size_t FreePagesOffset = 59;
constexpr std::size_t CountsOffset = 63;
constexpr std::size_t CountSize = 12;
constexpr std::size_t ColumnSize = 25;
constexpr std::size_t TreeSize = 52;
constexpr std::size_t IndexNameSize = 28;
constexpr std::size_t ColumnsPerTree = 10;
constexpr std::uint8_t SystemTable = 0x53;
constexpr std::uint8_t UserTable = 0x4E;
constexpr std::uint16_t NoColumn = 0xFFFF;
/// Kinds of a name of a tree.
constexpr std::uint8_t PrimaryName = 1;
constexpr std::uint8_t RelationName = 2;
} // namespace DefinitionLayout

namespace ColumnFlag
{
constexpr std::uint8_t Fixed = 0x01;
constexpr std::uint8_t Nullable = 0x02;
constexpr std::uint8_t AutoNumber = 0x04;
/// Of the system tables.
constexpr std::uint8_t System = 0x10;
/// A user's or group's number in the system tables.
constexpr std::uint8_t SystemId = 0x20;
} // namespace ColumnFlag

namespace IndexFlag
{
constexpr std::uint8_t Unique = 0x01;
constexpr std::uint8_t IgnoresNulls = 0x02;
constexpr std::uint8_t Required = 0x08;
/// On every index.
constexpr std::uint8_t Always = 0x80;
} // namespace IndexFlag

} // namespace jet
