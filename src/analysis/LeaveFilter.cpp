// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/LeaveFilter.h"

FilteredRows filterRows(const std::vector<LeaveRowKeys> &rows, const LeaveFilter &filter, int currentRow)
{
    FilteredRows result{std::vector<bool>(rows.size(), true), currentRow};
    bool found = false;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const int row = static_cast<int>(i) + 1;
        for (std::size_t criterion = 0; criterion < LeaveCriteria; ++criterion) {
            if (filter[criterion] <= 0) {
                continue;
            }
            const bool equal = rows[i][criterion] == static_cast<double>(filter[criterion]);
            result.shown[i] = equal;
            if (!equal && row == result.currentRow) {
                found = false;
            } else if (equal && !found) {
                result.currentRow = row;
                found = true;
            }
        }
    }
    return result;
}
