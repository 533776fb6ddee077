// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace chart
{

/// Lets screen readers read the current point of every chart. Calling it again has no effect.
void installChartAccessibility();

} // namespace chart
