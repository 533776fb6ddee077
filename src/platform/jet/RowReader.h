// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"
#include "platform/jet/DataPage.h"
#include "platform/jet/Pager.h"
#include "platform/jet/TableDefinition.h"

#include <QHash>

#include <cstddef>
#include <optional>
#include <vector>

namespace jet
{

class RowBytes;

/// The bytes of a row at its position, followed to where it has moved; nothing when the row is deleted, or is itself the new
/// location of another.
std::optional<Bytes> findRow(const Pager &pager, std::uint32_t owner, RowPosition position);

/// Calls `take(RowPosition, Bytes)` for every row on these pages in the order of the pages.
template <typename Take>
void forEachRow(const Pager &pager, std::uint32_t owner, const std::vector<std::uint32_t> &pages, Take &&take)
{
    for (const std::uint32_t page : pages) {
        const std::uint32_t count =
            locating(page, std::nullopt, [&] { return DataPage(pager.page(page, PageType::Data)).slotCount(); });
        for (std::uint32_t slot = 0; slot < count; ++slot) {
            locating(page, slot, [&] {
                const RowPosition position{page, static_cast<std::uint8_t>(slot)};
                if (const std::optional<Bytes> row = findRow(pager, owner, position)) {
                    take(position, *row);
                }
            });
        }
    }
}

/// Finds the pages that hold the rows of a table.
class RowPages
{
public:
    explicit RowPages(const Pager &pager) : pager_(pager) {}

    /// Ascending: the pages of the table's map when they hold as many rows as its definition counts, else all pages that name it
    /// their owner, since the maps of a file that was not closed properly are stale. A Fault when neither gives the number.
    std::vector<std::uint32_t> of(const TableDefinition &table);
    /// The pages have changed.
    void forget() { byOwner_.reset(); }

private:
    std::uint32_t rowsOn(const std::vector<std::uint32_t> &pages, std::uint32_t owner) const;

    const Pager &pager_;
    /// By owner, once asked for. Pages of a deleted table may name an owner that is in use again: the map is asked first.
    std::optional<QHash<std::uint32_t, std::vector<std::uint32_t>>> byOwner_;
};

/// Takes the cells of a table's rows apart.
class RowDecoder
{
public:
    RowDecoder(const Pager &pager, const TableDefinition &table);

    /// Into `values`, in the order of the table's columns; texts of the row before lend their memory.
    void decode(Bytes row, std::vector<Value> &values);
    void decodeColumn(const RowBytes &row, const ColumnDefinition &column, Value &value);

private:
    const Pager &pager_;
    const TableDefinition &table_;
    std::size_t longValueBudget_;
};

} // namespace jet
