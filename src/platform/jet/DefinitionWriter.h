// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/TableDefinition.h"

#include <QByteArray>

#include <vector>

namespace jet
{

class PageAllocator;

/// Gives columns that come one after the other their numbers and positions in a row, and the table its counts.
void layOutColumns(TableDefinition &table);

/// The definition as one run of bytes, with the first page's header; the other way round as readDefinition. Rows and numbers are
/// 0.
QByteArray encodeDefinition(const TableDefinition &table);

/// Puts the bytes of a definition on its pages; more are taken where it has become longer.
void writeDefinition(PageAllocator &allocator, std::uint32_t firstPage, const QByteArray &bytes);

/// The bytes of a definition with one more column.
QByteArray withBooleanColumn(const QByteArray &bytes, const TableDefinition &table, const QString &name);

/// A page of maps with one row for each of `pages`: a page that the map holds, or 0 for an empty map.
std::uint32_t makeMaps(PageAllocator &allocator, const std::vector<std::uint32_t> &pages);

} // namespace jet
