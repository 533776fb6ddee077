// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <QString>

namespace jet
{

class Pager;
struct IndexDefinition;
struct TableDefinition;

/// What a walk through one index found.
struct IndexWalk {
    std::vector<std::uint32_t> pages;
    /// Entries of the leaves, as they are.
    std::vector<std::string> entries;
    std::uint32_t distinctKeys = 0;
};

/// Walks an index from its root: levels, order, the entries of nodes, the links between neighbours. Every fault is passed to
/// `report`.
IndexWalk walkIndex(const Pager &pager, const TableDefinition &table, const IndexDefinition &index,
                    const std::function<void(const QString &)> &report);

} // namespace jet
