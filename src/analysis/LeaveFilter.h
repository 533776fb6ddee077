// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <vector>

/// Group, type, variety and block, in the order in which they are tested.
inline constexpr std::size_t LeaveCriteria = 4;
/// Numeric values of the four columns of a row.
using LeaveRowKeys = std::array<double, LeaveCriteria>;
/// 0 and below is no filter.
using LeaveFilter = std::array<std::int32_t, LeaveCriteria>;

struct FilteredRows {
    /// Of every row given, in its order.
    std::vector<bool> shown;
    /// The row that is current afterwards, counted from 1 as in the grid.
    int currentRow;
};

/// Decides which rows show. The last criterion that is set decides: a row of another group with the chosen block is shown. The
/// first row that meets a criterion becomes the current one.
FilteredRows filterRows(const std::vector<LeaveRowKeys> &rows, const LeaveFilter &filter, int currentRow);
