// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include <QString>

namespace jet
{

class PageAllocator;
struct DatabaseState;
struct NewTable;
struct TableDefinition;

/// Numbers of objects in the catalogue that every file has.
namespace CatalogueId
{
constexpr std::uint32_t Tables = 0x0F000001;
constexpr std::uint32_t Database = 0x10000000;
} // namespace CatalogueId

/// Makes an empty table: definition, maps, a page for each index, and its rows in the catalogue. Pages of the maps and the
/// indexes are filled into the definition.
void createTable(DatabaseState &state, const NewTable &table);
void addBooleanColumn(DatabaseState &state, const QString &table, const QString &column);

/// Takes the maps and the first pages of the indexes, puts them into the definition and writes that to its page.
void makePages(PageAllocator &allocator, TableDefinition &table);

} // namespace jet
